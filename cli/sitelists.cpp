#include "cli/sitelists.h"

#include "cli/broker.h"
#include "cli/command.h"
#include "cli/output.h"
#include "link/sitelists.h"

#include <QCoreApplication>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

using List = SiteLists::List;

/// For programs; people read `SiteLists::StateText`.
QString nameOf(SiteLists::State state) {
    static constexpr const char* Names[] = {"unknown", "served", "gone", "begins", "other-version"};
    return QString::fromLatin1(Names[static_cast<size_t>(state)]);
}

void printTable(const std::vector<List>& lists, Output& out) {
    constexpr qsizetype LeastWidth = 16;
    qsizetype width = LeastWidth;
    for (const List& list : lists)
        width = std::max(width, list.name.size());
    const auto print = [&](const QString& name, const QString& entries, const QString& state,
                           const QString& server) {
        out.Line(
            QStringLiteral("%1  %2  %3  %4")
                .arg(name.leftJustified(width), entries.rightJustified(8), state.leftJustified(20), server)
                .trimmed());
    };
    print(QStringLiteral("list"), QStringLiteral("entries"), QStringLiteral("state"),
          QStringLiteral("served by"));
    for (const List& list : lists)
        print(list.name, list.HasCount() ? QString::number(list.entries) : QStringLiteral("-"),
              SiteLists::StateText(list.state), list.ServerText());
}

void printJson(const std::vector<List>& lists, Output& out) {
    for (const List& list : lists) {
        QJsonObject object{{QStringLiteral("list"), list.name},
                           {QStringLiteral("state"), nameOf(list.state)},
                           {QStringLiteral("server"), list.server},
                           {QStringLiteral("user"), list.user}};
        if (list.HasCount())
            object[QStringLiteral("entries")] = static_cast<qint64>(list.entries);
        out.Text(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)) + QLatin1Char('\n'));
    }
}

/// Waits until all is known, prints it and ends the program.
class SitePrinter : public QObject {
public:
    SitePrinter(Broker& broker, bool asJson) : m_broker(broker), m_lists(broker.GetSeat()), m_asJson(asJson) {
        connect(&m_lists, &SiteLists::Changed, this, &SitePrinter::look);
        connect(&broker.Bus(), &MessageBus::StateChanged, this, &SitePrinter::look);
    }

private:
    void look() {
        const Seat& seat = m_broker.GetSeat();
        if (const QString reason = m_broker.Bus().Reason(); !m_broker.Bus().IsOnline() && !reason.isEmpty())
            fail(QStringLiteral("not connected: ") + reason);
        else if (seat.IsDeaf() || seat.IsRefused())
            fail(QStringLiteral("the broker passes nothing of this site on to this user"));
        else if (m_lists.IsComplete() && !m_isDone)
            print();
    }
    void fail(const QString& reason) {
        if (!m_isDone)
            TellError(QStringLiteral("freqstore-cli watch: ") + reason);
        end(ExitFile);
    }
    void print() {
        const std::vector<List> lists = m_lists.Get();
        Output out(stdout);
        if (lists.empty())
            TellError(QStringLiteral("freqstore-cli watch: no list is served at %1, or this user may not "
                                     "read any")
                          .arg(m_broker.Address().site));
        else
            (m_asJson ? printJson : printTable)(lists, out);
        end(ExitDone);
    }
    void end(int exitCode) {
        if (!std::exchange(m_isDone, true))
            QCoreApplication::exit(exitCode);
    }

    Broker& m_broker;
    SiteLists m_lists;
    bool m_asJson;
    bool m_isDone = false;
};

} // namespace

int PrintSiteLists(Broker& broker, bool asJson) {
    const SitePrinter printer(broker, asJson);
    return RunUntilSignal();
}
