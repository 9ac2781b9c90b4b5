#pragma once

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/report/rgexception.h"
#include "host/valuetree/tree.h"
#include "tests/support/testfolder.h"
#include "tests/support/traces.h"

#include <QFile>

#include <gtest/gtest.h>
#include <memory>

/// A target list of its own in the tree, a folder for its files, and the list as rows of text.
class TargetFixture : public testing::Test, protected TestFolder {
public:
    /// Frequency, bandwidth, comment, demodulation, priority, threat class, profile ID, profile name, signal
    /// class and transmission system of each target, joined by "|".
    static QStringList TargetsOf(const Node* list) {
        QStringList rows;
        for (const Node* target : list->Children()) {
            QStringList row;
            for (const char* key :
                 {"frequency", "bandwidth", "comment", "demodulation", "priority", "threadclass", "profileid",
                  "profilename", "signalclass", "transmissionsystem"}) {
                const ValueBase* value = target->GetValue(QString::fromLatin1(key));
                row << (value ? value->GetStringValue() : QStringLiteral("<none>"));
            }
            rows << row.join(QLatin1Char('|'));
        }
        return rows;
    }

protected:
    void SetUp() override {
        m_list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/Targets"));
        m_parser = std::make_unique<TargetListParser>(m_list);
    }
    void TearDown() override {
        m_parser.reset();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }

    /// As the handler does: a refusal by exception is a failure.
    bool Parse(const QString& path) {
        try {
            return m_parser->ParseSFLFile(path);
        } catch (const RGException& exception) {
            m_refusal = exception.GetErrorText();
            return false;
        }
    }
    void AddTarget(double frequency, const QString& comment = QStringLiteral("t"), int priority = 1) {
        m_parser->FillInData(frequency, 3000, comment, QStringLiteral("USB"), priority,
                             QStringLiteral("hostile"), QStringLiteral("id"), QStringLiteral("name"),
                             QStringLiteral("class"), QStringLiteral("system"));
    }
    QStringList Targets() const { return TargetsOf(m_list); }
    HalvoNodeMediatorCtrl& Controller() { return *m_parser->GetMediatorCtrl(); }

    Node* m_list = nullptr;
    std::unique_ptr<TargetListParser> m_parser;
    QString m_refusal;
};
