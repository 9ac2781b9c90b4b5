#pragma once

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/noi/noifrequencyhandler.h"
#include "host/gui/guibase.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/tree.h"
#include "tests/support/testfolder.h"
#include "tests/support/traces.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

/// The list of frequencies of interest in a folder of its own, with its settings, its files and the value
/// that takes its band list.
class NoiFixture : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        m_before = QDir::currentPath();
        m_config = CfgCenter::GetDirectory();
        QDir::setCurrent(m_folder.path());
        CfgCenter::SetDirectory(m_folder.path());
        m_list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/NOI"));
        m_definition = GetOrCreateValue<Value<QString>>(QStringLiteral("/Lists/NoiDefinition"));
    }
    void TearDown() override {
        NOIFrequencyHandler::DeleteInstance();
        Tree::Instance()->GetRoot()->DeleteChildren();
        CfgCenter::SetDirectory(m_config);
        QDir::setCurrent(m_before);
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
    QStringList Entries() const {
        QStringList rows;
        for (const Node* entry : m_list->Children()) {
            QStringList row;
            for (const char* key : {"frequency", "bandwidth", "comment"}) {
                const ValueBase* value = entry->GetValue(QString::fromLatin1(key));
                row << (value ? value->GetStringValue() : QStringLiteral("<none>"));
            }
            rows << row.join(QLatin1Char('|'));
        }
        return rows;
    }
    QString Bands() const { return m_definition->GetValue(); }
    static HalvoNodeMediatorCtrl& Controller() { return *NOIFrequencyHandler::Instance()->GetMediatorCtrl(); }

    Node* m_list = nullptr;
    Value<QString>* m_definition = nullptr;
    QString m_before;
    QString m_config;
};
