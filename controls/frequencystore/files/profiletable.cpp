#include "controls/frequencystore/files/carefulxmlreader.h"
#include "controls/frequencystore/files/generallistparser.h"
#include "controls/frequencystore/files/linereader.h"
#include "host/base/fixedplace.h"
#include "host/base/longwork.h"
#include "host/base/numbers.h"
#include "host/base/problems.h"
#include "host/base/trace.h"
#include "host/report/filestamps.h"

#include <QCoreApplication>
#include <QDomDocument>
#include <QFile>

#include <cmath>

namespace {

constexpr char TraceSource[] = "listviewshandler";
const QString ProfileElement = QStringLiteral("PROFILETBL");
constexpr int NoPriority = 11; ///< of a profile whose objects have no valid one
constexpr qint64 MaxFileSize = 512 * 1024 * 1024;

struct Objects {
    int priority = NoPriority;
    QString names;
    QString threatClass;
};

QString childText(const QDomNode& parent, const char* tag) {
    return FirstChildOfName(parent, QString::fromLatin1(tag)).toElement().text();
}

QDomElement nextSiblingOfName(const QDomNode& node) {
    return node.nextSiblingElement(node.nodeName());
}

/// The objects of the best priority. The first invalid priority ends the scan; what was found before stays.
Objects scanObjects(const QDomElement& profile) {
    Objects best;
    QDomElement object = FirstChildOfName(profile, QStringLiteral("OBJECTENTRY")).toElement();
    for (; !object.isNull(); object = nextSiblingOfName(object)) {
        const QDomNode priorityNode = FirstChildOfName(object, QStringLiteral("PRIORITY"));
        if (priorityNode.isNull())
            continue;
        bool isNumber = false;
        const double number = std::trunc(Quor::toDoubleEx(priorityNode.toElement().text(), &isNumber));
        if (!isNumber || number < 1 || number > 10)
            break;
        const int priority = static_cast<int>(number);
        const QString name = childText(object, "OBJECT_NAME");
        if (priority < best.priority)
            best = {priority, name, childText(object, "THREATCLASS")};
        else if (priority == best.priority)
            best.names += QStringLiteral(", ") + name;
    }
    return best;
}

QString orUndefined(const QString& text) {
    return text.isEmpty() ? QStringLiteral("undefined") : text;
}

/// What a look through a document finds.
struct Outline {
    std::vector<QStringView> profiles; ///< the outermost ones, with their tags
    QString root;
    QString version;
};

/// Looks through a document; false, told, when it is refused.
bool lookThrough(const QString& path, const QString& text, Outline& outline) {
    CarefulXmlReader reader(text);
    qsizetype begin = 0;
    int depth = 0; ///< of the profile around the present place; 0 outside of profiles
    while (reader.Next()) {
        LongWork::Step(reader.Position(), text.size());
        if (reader.IsStart() && reader.Depth() == 1) {
            outline.root = reader.Name().toString();
            outline.version = reader.Attributes().value(QLatin1String("Version")).toString();
        }
        if (reader.IsStart() && depth == 0 && reader.Name() == ProfileElement) {
            depth = reader.Depth();
            begin = reader.Begin();
        } else if (reader.IsEnd() && reader.Depth() == depth) {
            depth = 0;
            outline.profiles.push_back(QStringView(text).mid(begin, reader.End() - begin));
        }
    }
    if (!reader.Refusal().isEmpty())
        Problems::Report(TraceSource, {path, reader.Line(), reader.Refusal()});
    return reader.Refusal().isEmpty();
}

/// What a readable document without profiles is, as far as its root tells.
QString noProfilesIn(const Outline& outline) {
    return QCoreApplication::translate("Readers", "is no list and holds no profiles (root \"%1\"%2)")
        .arg(outline.root.left(40), outline.version.isEmpty()
                                        ? QString()
                                        : QStringLiteral(", version \"%1\"").arg(outline.version.left(20)));
}

} // namespace

QDomNode FirstChildOfName(const QDomNode& parent, const QString& tag) {
    for (QDomNode child = parent.firstChild(); !child.isNull(); child = child.nextSibling()) {
        if (child.nodeName() == tag)
            return child;
    }
    return QDomNode();
}

void GeneralListParser::fillInProfile(const QDomElement& profile, FileProblems& problems) {
    const Objects objects = scanObjects(profile);
    const QString id = orUndefined(childText(profile, "PROFILEID"));
    const QString name = orUndefined(childText(profile, "PROFILENAME"));
    const QString signalClass = orUndefined(childText(profile, "SIGNALCLASS"));

    QDomElement set = FirstChildOfName(profile, QStringLiteral("PROFILEPARAMETERSETTBL")).toElement();
    for (; !set.isNull(); set = nextSiblingOfName(set)) {
        const QDomNode bandwidthNode = FirstChildOfName(set, QStringLiteral("NOMINALBANDWIDTH"));
        bool isNumber = true;
        const double bandwidth =
            bandwidthNode.isNull() ? 0.0 : Quor::toDoubleEx(bandwidthNode.toElement().text(), &isNumber);
        if (!isNumber)
            return;
        const QDomNode frequencyNode = FirstChildOfName(set, QStringLiteral("NOMINALFREQUENCY"));
        if (frequencyNode.isNull())
            continue;
        const double frequency = Quor::toDoubleEx(frequencyNode.toElement().text(), &isNumber);
        if (!isNumber)
            return;
        problems.CheckFrequency(frequencyNode.lineNumber(), frequency);
        // This format carries no transmission system.
        FillInData(frequency, bandwidth, objects.names, childText(set, "MODULATIONTYPE"), objects.priority,
                   objects.threatClass, id, name, signalClass, orUndefined(QString()));
    }
}

/// Takes a profile's element, and the profiles within it. The model of a document takes many times the memory
/// of its text, so there is one of one profile at a time.
void GeneralListParser::fillInProfiles(QStringView element, FileProblems& problems) {
    constexpr qsizetype LeastModel = 256 * 1024;
    constexpr qsizetype BytesPerCharacter = 64;
    RequireMemory(LeastModel + element.size() * BytesPerCharacter);
    QDomDocument document;
    document.setContent(element.toString());
    // The list of found elements is searched anew by each access: take the elements out first.
    std::vector<QDomElement> profiles;
    const QDomNodeList found = document.elementsByTagName(ProfileElement);
    profiles.reserve(static_cast<size_t>(found.size()));
    for (int i = 0; i < found.size(); ++i)
        profiles.push_back(found.at(i).toElement());
    for (const QDomElement& profile : profiles)
        fillInProfile(profile, problems);
}

bool GeneralListParser::ParseProfileTable(const QString& path) {
    FileStamps::Reading reading(path);
    QFile file(path);
    const QString refusal = RefuseToOpen(file, MaxFileSize);
    if (!refusal.isEmpty())
        return TellRefusal(FixedPlace::CannotOpenProfileTable, {path, 0, refusal});
    QString text;
    LongWork::Elsewhere([&] { text = QString::fromUtf8(file.readAll()); });
    file.close();
    reading.Finish();
    TraceLazily(FixedPlace::ProfileTableText, [&] { return text; });

    Prepare4NewFile();
    Outline outline;
    bool readable = false;
    LongWork::Elsewhere([&] { readable = lookThrough(path, text, outline); });
    if (readable && outline.profiles.empty())
        Problems::Report(TraceSource, {path, 0, noProfilesIn(outline)});
    if (readable) {
        FileProblems problems(path, TraceSource);
        qint64 filled = 0;
        for (const QStringView profile : outline.profiles) {
            LongWork::Step(filled++, static_cast<qint64>(outline.profiles.size()));
            fillInProfiles(profile, problems);
        }
    }
    ResetDataAfterNewFile();
    return readable && !outline.profiles.empty();
}
