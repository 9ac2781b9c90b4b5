#pragma once

#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "tests/frequencystore/listrows.h"

inline constexpr char TwoXml[] =
    "<FrequencyStoreList Version=\"1\" Usage=\"NOI\">"
    "<FrequencyStoreEntry Type=\"d\"><Comment>one</Comment><FFM_Settings><Frequency>7055000</Frequency>"
    "<IFBandwidth>3000</IFBandwidth></FFM_Settings></FrequencyStoreEntry>"
    "<FrequencyStoreEntry><FFM_Settings><Frequency>0.5</Frequency></FFM_Settings></FrequencyStoreEntry>"
    "</FrequencyStoreList>";
inline constexpr char Profiles[] =
    "<T><PROFILETBL><PROFILEID>P</PROFILEID><OBJECTENTRY><OBJECT_NAME>Ship</OBJECT_NAME>"
    "<PRIORITY>1</PRIORITY></OBJECTENTRY><PROFILEPARAMETERSETTBL>"
    "<NOMINALFREQUENCY>156800000</NOMINALFREQUENCY><NOMINALBANDWIDTH>25000</NOMINALBANDWIDTH>"
    "</PROFILEPARAMETERSETTBL></PROFILETBL></T>";

/// The list of frequencies of interest in a folder of its own, with its settings, its files and the value
/// that takes its band list.
class NoiFixture : public ListFixture {
protected:
    void SetUp() override {
        m_list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/NOI"));
        m_definition = GetOrCreateValue<Value<QString>>(QStringLiteral("/Lists/NoiDefinition"));
    }
    void TearDown() override {
        NOIFrequencyHandler::DeleteInstance();
        ListFixture::TearDown();
    }

    /// Starts the handler with that file remembered, bound to the definition.
    NOIFrequencyHandler& Start(const QString& remembered = QString()) {
        CfgCenter::GetAppCfg(ICfg::StartUp).SetString(QStringLiteral("NOIFrequencies"), remembered);
        NOIFrequencyHandler& handler = *NOIFrequencyHandler::Instance();
        handler.Init(m_list);
        handler.SetNOIDefinition_ValuePath(QStringLiteral("/Lists/NoiDefinition"));
        return handler;
    }
    /// Ends the handler, as at the end of the program, and empties the list.
    void End() {
        NOIFrequencyHandler::DeleteInstance();
        m_list->DeleteChildren();
    }
    static QString Remembered() {
        return CfgCenter::GetAppCfg(ICfg::StartUp).GetString(QStringLiteral("NOIFrequencies"), QString());
    }

    /// "frequency|bandwidth|comment" of each entry.
    QStringList Entries() const { return RowsOf(m_list, {"frequency", "bandwidth", "comment"}); }
    QString Bands() const { return m_definition->GetValue(); }
    static HalvoNodeMediatorCtrl& Controller() { return *NOIFrequencyHandler::Instance()->GetMediatorCtrl(); }

    Value<QString>* m_definition = nullptr;
};
