#include "cli/arguments.h"
#include "cli/command.h"
#include "cli/output.h"
#include "receiver/radioprofile.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

QString portName(RadioModel::Port port) {
    static constexpr const char* Names[] = {"none", "serial", "network", "other"};
    return QString::fromLatin1(Names[static_cast<size_t>(port)]);
}

void printTable(const std::vector<RadioModel>& models) {
    Output out(stdout);
    for (const RadioModel& model : models)
        out.Line(QStringLiteral("%1  %2  %3")
                     .arg(model.number, 6)
                     .arg(portName(model.port), -8)
                     .arg(model.FullName()));
}

void printJson(const std::vector<RadioModel>& models) {
    QJsonArray array;
    for (const RadioModel& model : models)
        array.append(QJsonObject{{QStringLiteral("model"), model.number},
                                 {QStringLiteral("maker"), model.maker},
                                 {QStringLiteral("name"), model.name},
                                 {QStringLiteral("port"), portName(model.port)},
                                 {QStringLiteral("speed"), model.speed}});
    Output(stdout).Text(QString::fromUtf8(QJsonDocument(array).toJson()));
}

} // namespace

int RunReceivers(const QStringList& arguments) {
    Arguments args(
        "receivers",
        "Lists the models of receivers that can be connected; with words, those that have all of them.",
        Arguments::AnyNumber, false);
    args.Parser().addOption({QStringLiteral("format"), QStringLiteral("table (the default) or json."),
                             QStringLiteral("FORMAT"), QStringLiteral("table")});
    args.Parser().addPositionalArgument(QStringLiteral("WORD"),
                                        QStringLiteral("Part of maker, model or number."),
                                        QStringLiteral("[WORD...]"));
    int exitCode = ExitDone;
    if (!args.Take(arguments, exitCode))
        return exitCode;
    const QString format = args.Value("format");
    if (format != QLatin1String("table") && format != QLatin1String("json")) {
        args.TellUsage(QStringLiteral("--format takes table or json, not \"%1\"").arg(format));
        return ExitUsage;
    }
    std::vector<RadioModel> models = RadioModels();
    std::erase_if(models, [words = args.Files()](const RadioModel& model) {
        const QString text = model.FullName() + QLatin1Char(' ') + QString::number(model.number);
        return !std::ranges::all_of(
            words, [&](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
    });
    if (models.empty())
        TellError(QStringLiteral(
            "no model has all of these words; a program that speaks rigctld's protocol is model 2"));
    (format == QLatin1String("json") ? printJson : printTable)(models);
    return ExitDone;
}
