#pragma once

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatamediator.h"
#include "controls/frequencystore/results/searchmcdataresult.h"
#include "host/base/quoros.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/tree.h"
#include "tests/support/testfolder.h"
#include "tests/support/text.h"
#include "tests/support/traces.h"

#include <QFile>

#include <gtest/gtest.h>

/// A clock that stands still.
struct FixedClock : IQuorOS {
    explicit FixedClock(qint64 microseconds) : now(microseconds) { QuorOS::Replace(this); }
    ~FixedClock() override { QuorOS::Replace(nullptr); }
    qint64 CurrentTime() const override { return now; }
    qint64 now;
};

/// The list of classifier results with its handler, a data directory of its own, and a local time zone that
/// is two hours ahead of UTC in summer.
class ResultFixture : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        m_zone = qgetenv("TZ");
        qputenv("TZ", "Europe/Berlin");
        tzset();
        m_configured = CfgCenter::GetDirectory();
        CfgCenter::SetDirectory(m_folder.path());
        CfgCenter::GetAdminCfg(ICfg::Administration)
            .SetString(QStringLiteral("VeltaDataDir"), m_folder.path());
        m_list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/Results"));
        SearchMCDataHandler::Instance()->Init(m_list);
    }
    void TearDown() override {
        SearchMCDataHandler::DeleteInstance();
        Tree::Instance()->GetRoot()->DeleteChildren();
        CfgCenter::SetDirectory(m_configured);
        m_zone.isNull() ? qunsetenv("TZ") : qputenv("TZ", m_zone);
        tzset();
    }

    SearchMCDataResult AddResult(double frequency, double bandwidth = 3000, const char* locked = "UNLOCKED",
                                 qint64 lockTime = 0, int confidence = 0) {
        auto* node = new Node(m_list, QStringLiteral("Entry"));
        m_list->AddItemUnique(node);
        SearchMCDataResult result(node, true, nullptr);
        result.SetFrequency(frequency);
        result.SetBandwidth(bandwidth);
        result.SetLocked(Q(locked));
        result.SetLockTime(static_cast<quint64>(lockTime));
        result.SetConfidence(confidence);
        return result;
    }
    HalvoNodeMediatorCtrl& Controller() { return *SearchMCDataHandler::Instance()->GetMediatorCtrl(); }
    SearchMCDataMediator& Mediator(int index) {
        Controller().ForceUpdateNow();
        return dynamic_cast<SearchMCDataMediator&>(*Controller().GetItemwithIndex(index));
    }
    Node* Entry(size_t index) { return m_list->Children()[index]; }
    /// Frequency, bandwidth, comment, lock state, lock time, confidence and type of each result, joined by
    /// "|".
    QStringList Results() {
        Controller().ForceUpdateNow();
        QStringList rows;
        for (const Node* entry : m_list->Children()) {
            QStringList row;
            for (const char* key :
                 {"frequency", "bandwidthsel", "comment", "locked", "locktime", "confidence", "type"}) {
                const ValueBase* value = entry->GetValue(Q(key));
                row << (value ? value->GetStringValue() : Q("<none>"));
            }
            rows << row.join(QLatin1Char('|'));
        }
        return rows;
    }

    QByteArray m_zone;
    QString m_configured;
    Node* m_list = nullptr;
};
