#pragma once

#include "controls/frequencystore/results/searchmcdatahandler.h"
#include "controls/frequencystore/results/searchmcdatamediator.h"
#include "controls/frequencystore/results/searchmcdataresult.h"
#include "tests/frequencystore/listrows.h"
#include "tests/support/clock.h"

/// The list of classifier results with its handler, a data directory of its own, and a local time zone that
/// is two hours ahead of UTC in summer.
class ResultFixture : public ListFixture {
protected:
    void SetUp() override {
        CfgCenter::GetAdminCfg(ICfg::Administration)
            .SetString(QStringLiteral("VeltaDataDir"), m_folder.path());
        m_list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/Results"));
        SearchMCDataHandler::Instance()->Init(m_list);
    }
    void TearDown() override {
        SearchMCDataHandler::DeleteInstance();
        ListFixture::TearDown();
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
        return RowsOf(m_list,
                      {"frequency", "bandwidthsel", "comment", "locked", "locktime", "confidence", "type"});
    }

    const Zone m_zone{"Europe/Berlin"};
};
