#pragma once

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "host/startup/cfgcenter.h"
#include "host/valuetree/tree.h"
#include "tests/support/testfolder.h"
#include "tests/support/text.h"
#include "tests/support/traces.h"

/// The values of these keys of each entry of a list, joined by "|".
inline QStringList RowsOf(const Node* list, const QStringList& keys) {
    QStringList rows;
    for (const Node* entry : list->Children()) {
        QStringList row;
        for (const QString& key : keys) {
            const ValueBase* value = entry->GetValue(key);
            row << (value ? value->GetStringValue() : Q("<none>"));
        }
        rows << row.join(QLatin1Char('|'));
    }
    return rows;
}

/// What a text is in UTF-16, little-endian, behind a byte-order mark.
inline QByteArray Utf16(const QString& text) {
    QByteArray bytes("\xFF\xFE", 2);
    bytes.append(reinterpret_cast<const char*>(text.utf16()), 2 * text.size());
    return bytes;
}

/// A folder that is the current one and has the settings, as long as the test runs; the tree is empty after
/// it.
class ListFixture : public testing::Test, protected TestFolder {
protected:
    ListFixture() : m_before(QDir::currentPath()), m_config(CfgCenter::GetDirectory()) {
        QDir::setCurrent(m_folder.path());
        CfgCenter::SetDirectory(m_folder.path());
    }
    ~ListFixture() override {
        CfgCenter::SetDirectory(m_config);
        QDir::setCurrent(m_before);
    }

    void TearDown() override { Tree::Instance()->GetRoot()->DeleteChildren(); }

    Node* m_list = nullptr;

private:
    QString m_before;
    QString m_config;
};
