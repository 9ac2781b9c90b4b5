#pragma once

#include "controls/frequencystore/targets/targetlistparser.h"
#include "host/report/rgexception.h"
#include "tests/frequencystore/listrows.h"

#include <memory>

/// A target list of its own in the tree, a folder for its files, and the list as rows of text.
class TargetFixture : public ListFixture {
public:
    /// Frequency, bandwidth, comment, demodulation, priority, threat class, profile ID, profile name, signal
    /// class and transmission system of each target, joined by "|".
    static QStringList TargetsOf(const Node* list) {
        return RowsOf(list, {"frequency", "bandwidth", "comment", "demodulation", "priority", "threadclass",
                             "profileid", "profilename", "signalclass", "transmissionsystem"});
    }

protected:
    void SetUp() override {
        m_list = Tree::Instance()->MakeNode(QStringLiteral("/Lists/Targets"));
        m_parser = std::make_unique<TargetListParser>(m_list);
    }
    void TearDown() override {
        m_parser.reset();
        ListFixture::TearDown();
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

    std::unique_ptr<TargetListParser> m_parser;
    QString m_refusal;
};
