#include "cli/twolists.h"

#include "cli/foreign.h"
#include "host/base/frequencytext.h"
#include "host/base/numbers.h"

#include <QJsonArray>

#include <algorithm>
#include <cstring>

namespace {

constexpr double LargestTolerance = 1e6; // Hz

bool sameShape(const std::vector<EntryField>& a, const std::vector<EntryField>& b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const EntryField& x, const EntryField& y) {
        return x.type == y.type && x.key == y.key;
    });
}

/// Whether the list of a kind reads files of that name, unless the file tells that it is of another.
bool doesRead(const QString& kind, const QString& path) {
    const QString told = ListKindToldBy(path);
    if (!told.isEmpty() || kind.isEmpty())
        return told == kind;
    const std::unique_ptr<CliList> list = MakeList(kind);
    return list &&
           (list->Names().FormatRead(path) != FileFormat::Unknown || Foreign::IsOfOthers(*list, path));
}

} // namespace

void StoredEntries::Append(const std::vector<EntryField>& entry) {
    if (m_shapes.empty() || !sameShape(m_shapes.back(), entry)) {
        m_shapes.push_back(entry);
        for (EntryField& field : m_shapes.back())
            field.text = QString();
    }
    m_begins.push_back({m_texts.size(), m_shapes.size() - 1});
    for (const EntryField& field : entry) {
        const QByteArray text = field.text.toUtf8();
        const auto length = static_cast<quint32>(text.size());
        char bytes[sizeof length];
        std::memcpy(bytes, &length, sizeof length);
        m_texts.append(bytes, sizeof length).append(text.constData(), length);
    }
}

std::vector<EntryField> StoredEntries::At(size_t place) const {
    std::vector<EntryField> entry = m_shapes[m_begins[place].shape];
    const char* next = m_texts.data() + m_begins[place].text;
    for (EntryField& field : entry) {
        quint32 length = 0;
        std::memcpy(&length, next, sizeof length);
        field.text = QString::fromUtf8(next + sizeof length, length);
        next += sizeof length + length;
    }
    return entry;
}

QString TwoLists::KindOfBoth(const Arguments& args) {
    if (args.IsSet("list")) {
        const bool isKnown = ListKinds().contains(args.Value("list"));
        if (!isKnown)
            args.TellUsage(QStringLiteral("no kind of list is called \"%1\"").arg(args.Value("list")));
        return isKnown ? args.Value("list") : QString();
    }
    const QString first = args.Files()[0];
    const QString second = args.Files()[1];
    for (const QString& kind : {ListKindOf(first), ListKindOf(second)}) {
        if (doesRead(kind, first) && doesRead(kind, second))
            return kind;
    }
    args.TellUsage(QStringLiteral("\"%1\" is of kind %2, \"%3\" of kind %4: no list reads both")
                       .arg(first, ListKindOf(first), second, ListKindOf(second)));
    return QString();
}

void TwoLists::AddTolerance(QCommandLineParser& parser) {
    parser.addOption(
        {QStringLiteral("tolerance"),
         QStringLiteral("How far apart the frequencies of one entry may be, in Hz or with a unit (0)."),
         QStringLiteral("HZ"), QStringLiteral("0")});
}

bool TwoLists::TakeTolerance(const Arguments& args, double& hertz) {
    const QString text = args.Value("tolerance");
    if (Quor::ParseFrequency(text, hertz) && hertz >= 0 && hertz <= LargestTolerance)
        return true;
    args.TellUsage(QStringLiteral("--tolerance \"%1\" is no number of Hz up to 1 MHz").arg(text));
    return false;
}

bool TwoLists::Read(const Arguments& args, const QString& kind, double tolerance, const Reader& readFirst) {
    const QStringList paths = args.Files();
    const Reader read = [&args](CliList& list, const QString& path) {
        return Foreign::IsOfOthers(list, path) ? Foreign::Read(args, list, path) : list.Read(path);
    };
    EntryMerge::KeyMaker maker;
    const auto keysOf = [&maker](const CliList& list, StoredEntries* stored) {
        std::vector<EntryMerge::Key> keys;
        list.ForEachEntry([&](const std::vector<EntryField>& entry) {
            keys.push_back(maker.Of(ComparedFields(entry)));
            if (stored)
                stored->Append(entry);
            return true;
        });
        return keys;
    };
    m_first = MakeList(kind);
    if (!read(*m_first, paths[1]))
        return false;
    const std::vector<EntryMerge::Key> theirs = keysOf(*m_first, &m_second);
    m_first.reset(); // one list of a kind at a time
    m_first = MakeList(kind);
    if (!(readFirst ? readFirst : read)(*m_first, paths[0]))
        return false;
    const std::vector<EntryMerge::Key> mine = keysOf(*m_first, nullptr);
    m_sizeOfFirst = mine.size();
    m_ofSecond = EntryMerge::Match(mine, theirs, tolerance);
    return true;
}

std::vector<quint32> TwoLists::OfFirst() const {
    std::vector<quint32> ofFirst(m_sizeOfFirst, EntryMerge::None);
    for (size_t place = 0; place < m_ofSecond.size(); ++place) {
        if (m_ofSecond[place] != EntryMerge::None)
            ofFirst[m_ofSecond[place]] = static_cast<quint32>(place);
    }
    return ofFirst;
}

std::vector<EntryMerge::Field> ComparedFields(const std::vector<EntryField>& entry) {
    std::vector<EntryMerge::Field> fields;
    fields.reserve(entry.size());
    for (const EntryField& field : entry)
        fields.push_back({field.key, field.text});
    return fields;
}

QJsonValue JsonOf(const EntryField& field) {
    double number = 0;
    switch (field.type) {
    case FieldType::Text:
        return field.text;
    case FieldType::Flag:
        return field.text == QLatin1String("true");
    case FieldType::Number:
        return Quor::ParseDouble(field.text, number) ? QJsonValue(number) : QJsonValue();
    case FieldType::Numbers:
        break;
    }
    QJsonArray numbers;
    for (const QString& text : field.text.split(QLatin1Char(';'), Qt::SkipEmptyParts)) {
        if (Quor::ParseDouble(text, number))
            numbers.append(number);
    }
    return numbers;
}
