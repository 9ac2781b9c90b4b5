#include "controls/frequencystore/common/sendto.h"

#include "controls/frequencystore/detections/searchmcextendedvectorlistview.h"
#include "controls/frequencystore/memory/memorysystemhandler.h"
#include "host/freqlist/buttonbar.h"
#include "tests/frequencystore/noi/noifixture.h"
#include "tests/support/dialogs.h"

#include <QMenu>

#include <gtest/gtest.h>

namespace {

class Sending : public NoiFixture {
protected:
    void SetUp() override {
        NoiFixture::SetUp();
        Start().AddToFreqStore();
        Tree::Instance()->MakeNode(QStringLiteral("/SendTest"));
        list = GetOrCreateValue<ValueList<ExtendedDetectionConventional>>(
            QStringLiteral("/SendTest/Detections"));
    }
    void TearDown() override {
        for (const int id : FreqStore::Instance().GetListIds())
            FreqStore::Instance().RemoveFrequencyListDefinition(id);
        NoiFixture::TearDown();
    }
    static FreqStoreXml::FrequencyStoreEntry entry(double hertz) {
        FreqStoreXml::FrequencyStoreEntry made;
        made.GetFFM_Settings().GetFrequency().SetValue(hertz);
        return made;
    }
    std::vector<double> frequencies() const {
        std::vector<double> found;
        for (const Node* child : m_list->Children())
            found.push_back(numeric_cast(child->GetValue(QStringLiteral("frequency")))->ValueAsDouble());
        return found;
    }

    ValueList<ExtendedDetectionConventional>* list = nullptr;
};

TEST_F(Sending, DoublesNothingWithinTheTolerance) {
    const std::vector<SendTo::Target> targets = SendTo::Targets();
    ASSERT_EQ(targets.size(), 1u);
    HalvoNodeMediatorCtrl& target = *targets[0].controller;
    SendTo::Outcome outcome = SendTo::Send({entry(7e6), entry(7e6 + 400), entry(8e6), entry(0), entry(-5),
                                            entry(std::numeric_limits<double>::infinity())},
                                           target, 500);
    EXPECT_EQ(outcome.added, 2);
    EXPECT_EQ(outcome.there, 1);
    EXPECT_EQ(outcome.unusable, 3);
    const struct {
        double hertz;
        double tolerance;
        qsizetype added;
    } rows[] = {{7e6, 0, 0},         {7e6 + 1, 0, 1},     {7e6 + 501, 500, 0},
                {7e6 + 502, 500, 1}, {8e6 - 500, 500, 0}, {8e6 - 501, 500, 1}};
    for (const auto& row : rows) {
        outcome = SendTo::Send({entry(row.hertz)}, target, row.tolerance);
        EXPECT_EQ(outcome.added, row.added) << row.hertz;
        EXPECT_EQ(outcome.there, 1 - row.added) << row.hertz;
    }
    EXPECT_EQ(frequencies(), (std::vector<double>{7e6, 8e6, 7e6 + 1, 7e6 + 502, 8e6 - 501}));
}

TEST_F(Sending, EntriesBecomeMemoryChannels) {
    MemorySystemHandler& memory = *MemorySystemHandler::Instance();
    memory.SetListType(MediatorType::MemoryVUHF);
    Node* channels = Tree::Instance()->MakeNode(QStringLiteral("/SendTest/Memory"));
    memory.Init(channels);
    FreqStoreXml::FrequencyStoreEntry sent = entry(118.1e6);
    sent.SetComment(QStringLiteral("Tower"));
    sent.GetFFM_Settings().GetIFBandwidth().SetValue(25000);
    const SendTo::Outcome outcome = SendTo::Send({sent, sent}, *memory.GetMediatorCtrl(), 500);
    EXPECT_EQ(outcome.added, 1);
    EXPECT_EQ(outcome.there, 1);
    ASSERT_EQ(channels->ChildCount(), 1u);
    const Node* channel = channels->Children().front();
    EXPECT_EQ(channel->GetName(), "MemItem");
    EXPECT_EQ(channel->GetValue(QStringLiteral("frequency"))->GetStringValue(), "118100000");
    EXPECT_EQ(channel->GetValue(QStringLiteral("bandwidthsel"))->GetStringValue(), "25000");
    EXPECT_EQ(channel->GetValue(QStringLiteral("comment"))->GetStringValue(), "Tower");
    QString seen;
    if (memory.IsChangedSinceJobSave())
        AnswerQuestion(QMessageBox::Ok, seen);
    MemorySystemHandler::DeleteInstance();
}

TEST_F(Sending, ToleranceIsRemembered) {
    EXPECT_EQ(SendTo::Tolerance(), 500);
    SendTo::SetTolerance(12500);
    EXPECT_EQ(SendTo::Tolerance(), 12500);
}

TEST_F(Sending, SelectedDetectionsGoWithLevelAndTime) {
    ExtendedDetectionConventional detection;
    detection.SetID(3);
    detection.SetFrequency(7e6);
    detection.SetBandwidth(2700);
    detection.SetLevel(42);
    detection.SetStartTime(1.7e15);
    list->PushBack(detection);
    detection.Result().frequency = 9000100;
    detection.Result().transmissionType = "Baudot";
    list->PushBack(detection);
    SearchMCExtendedVectorListViewHF view(nullptr, "v");
    ASSERT_TRUE(view.Set_ValuePath(QStringLiteral("/SendTest/Detections")));
    view.SelectAll();
    FreqStoreListViewButtonBar bar;
    view.InitFreqStoreWidget(&bar);
    QMenu* menu = bar.GetAction(FreqStoreListViewButtonBar::SendTo)->menu<QMenu*>();
    ASSERT_NE(menu, nullptr);
    emit menu->aboutToShow();
    ASSERT_EQ(menu->actions().size(), 3) << "the list, a gap, the tolerance";
    menu->actions().first()->trigger();
    EXPECT_EQ(frequencies(), (std::vector<double>{7e6, 9000100}));
    const Node* last = m_list->Children().back();
    const QString comment = last->GetValue(QStringLiteral("comment"))->GetStringValue();
    const QString begin = DetectionConventionalAdapter::GetStartTimeString(detection);
    EXPECT_EQ(comment, "Detection 3, level 42, " + begin + ", Baudot");
    EXPECT_EQ(numeric_cast(last->GetValue(QStringLiteral("bandwidth")))->ValueAsDouble(), 2700);
    emit menu->aboutToShow();
    menu->actions().first()->trigger();
    EXPECT_EQ(m_list->ChildCount(), 2u);
}

} // namespace
