// What controllers and plug-ins rely on of mediators.

#include "host/freqlist/frequencynodemediator.h"
#include "host/freqlist/frequencynodemediatorctrl.h"
#include "host/valuetree/tree.h"
#include "host/valuetree/valueselection.h"
#include "tests/support/recorder.h"
#include "tests/support/text.h"

#include <gtest/gtest.h>

namespace {

/// A plug-in's own mediator, which binds a value of its own, and outlives code 18 on request.
class OwnMediator : public FrequencyNodeMediator {
public:
    OwnMediator(MediatorCtrl* controller, Observable* node, std::string& common)
        : FrequencyNodeMediator(controller, node, 9), trail(common) {
        UpdateDependentValues();
    }
    void Update(Observable* subject, TChangeCode code) override {
        trail += 'o' + std::to_string(static_cast<int>(code));
        if (staysAtTheEnd && code == TChangeCode::MediatorNodeEnds)
            return;
        if (code == TChangeCode::Removing)
            ForgetIfRemoved(m_count, subject);
        FrequencyNodeMediator::Update(subject, code);
    }
    bool IsBound() const { return m_count != nullptr; }
    static inline bool staysAtTheEnd = false;

protected:
    void UpdateDependentValues() override {
        FrequencyNodeMediator::UpdateDependentValues();
        Rebind(m_count, GetNode()->FindOwn<ValueNumeric<int>>(Names::Intern(Q("count"))));
    }

private:
    std::string& trail;
    ValueNumeric<int>* m_count = nullptr;
};

class OwnController : public FrequencyNodeMediatorCtrl {
public:
    explicit OwnController(std::string& common) : FrequencyNodeMediatorCtrl(9), trail(common) {}
    void NotifyCreated(Mediator* mediator) override {
        ++created;
        FrequencyNodeMediatorCtrl::NotifyCreated(mediator);
    }
    size_t created = 0;

protected:
    Mediator* CreateMediator(Observable* node) override { return new OwnMediator(this, node, trail); }

private:
    std::string& trail;
};

/// With entries whose values came one by one, and with entries made from a shape.
class MediatorContract : public testing::TestWithParam<bool> {
protected:
    void SetUp() override {
        list = Tree::Instance()->MakeNode(Q("/Mediated"));
        for (int i = 0; i < 3; ++i)
            Add(i);
    }
    void TearDown() override { Tree::Instance()->GetRoot()->DeleteChildren(); }

    Node* Add(double hertz) {
        if (GetParam()) {
            static const auto key = [](const char* name) { return Names::Intern(Q(name)); };
            static const Shape& shape = Shape::Make(
                {Shape::Number<double>(key("frequency"), 0, 0, 0), Shape::Text(key("comment")),
                 Shape::Number<int>(key("count"), 0, 0, 0), Shape::Selection(key("demodulation"))});
            Node* entry = Node::NewEntry(list, key("Entry"), shape);
            list->AddItemUnique(entry);
            EXPECT_TRUE(entry->FillFromShape());
            entry->ShapedValue<ValueNumeric<double>>(0).SetValue(hertz);
            return entry;
        }
        auto* entry = new Node(list, Q("Entry"));
        list->AddItemUnique(entry);
        auto* frequency = new ValueNumeric<double>;
        frequency->SetValue(hertz);
        EXPECT_TRUE(entry->AddValue(Q("frequency"), frequency));
        EXPECT_TRUE(entry->AddValue(Q("comment"), new Value<QString>));
        EXPECT_TRUE(entry->AddValue(Q("count"), new ValueNumeric<int>));
        EXPECT_TRUE(entry->AddValue(Q("demodulation"), new ValueSelection));
        return entry;
    }
    static ValueBase* Of(Node* entry, const char* name) {
        return entry->FindOwnValue(Names::Intern(Q(name)));
    }
    std::string Told() { return std::exchange(trail, {}); }

    Node* list = nullptr;
    std::string trail;
};

TEST_P(MediatorContract, SeveralControllersFollowOneListEachInItsTurn) {
    OwnController own(trail);
    FrequencyNodeMediatorCtrl plain(1);
    Recorder early, late;
    Node* entry = list->Children()[1];
    ValueBase* frequency = Of(entry, "frequency");
    frequency->AddObserver(&early);
    early.onUpdate = [&](Observable*, TChangeCode) { trail += 'e'; };
    late.onUpdate = [&](Observable*, TChangeCode) { trail += 'l'; };
    own.Init(Q("/Mediated"));
    frequency->AddObserver(&late);
    plain.Init(Q("/Mediated"));
    EXPECT_EQ(own.created, 3u);
    EXPECT_EQ(plain.size(), 3u);
    Told();
    frequency->SetStringValue(Q("77"));
    EXPECT_EQ(Told(), "eo3l");
    EXPECT_TRUE(own.IsDirty() && plain.IsDirty());
    double hertz = 0;
    EXPECT_TRUE(own.At(1)->GetFrequency(hertz, 0) && hertz == 77);
    EXPECT_TRUE(plain.At(1)->GetFrequency(hertz, 0) && hertz == 77);
    auto* demodulation = static_cast<ValueSelection*>(Of(entry, "demodulation"));
    demodulation->AddItems({Q("AM"), Q("USB")});
    demodulation->SetStringValue(Q("USB"));
    EXPECT_EQ(Told(), "o0o3");
    EXPECT_EQ(plain.At(1)->GetDemodulationString(0), Q("USB"));
    Of(entry, "count")->SetStringValue(Q("5"));
    EXPECT_EQ(Told(), "o3") << "a value that only the plug-in's mediator knows";

    plain.RemoveMyMediators();
    frequency->SetStringValue(Q("78"));
    EXPECT_EQ(Told(), "eo3l");
    own.RemoveMyMediators();
    frequency->SetStringValue(Q("79"));
    EXPECT_EQ(Told(), "el");
    plain.Init(Q("/Mediated"));
    plain.ForceUpdateNow();
    frequency->SetStringValue(Q("80"));
    EXPECT_TRUE(plain.IsDirty());
    EXPECT_TRUE(plain.At(1)->GetFrequency(hertz, 0) && hertz == 80);
}

TEST_P(MediatorContract, ValuesAreBoundWhenTheNodeSpeaksAndForgottenWhenTheyGo) {
    OwnController own(trail);
    own.Init(Q("/Mediated"));
    Node* entry = list->Children()[0];
    auto* mediator = static_cast<OwnMediator*>(own.At(0));
    double hertz = -1;
    EXPECT_FALSE(mediator->GetBandwidth(hertz, 0));
    EXPECT_TRUE(entry->AddValue(Q("bandwidth"), new ValueNumeric<double>));
    EXPECT_FALSE(mediator->GetBandwidth(hertz, 0)) << "nobody has told of it yet";
    entry->Commit();
    EXPECT_TRUE(mediator->GetBandwidth(hertz, 0));
    EXPECT_EQ(Told(), "o0");
    Of(entry, "bandwidth")->SetStringValue(Q("5"));
    EXPECT_EQ(Told(), "o3");

    ValueBase* frequency = Of(entry, "frequency");
    frequency->SetName(Q("elsewhere"));
    EXPECT_TRUE(mediator->GetFrequency(hertz, 0)) << "it is held, whatever its name";
    frequency->SetStringValue(Q("9"));
    EXPECT_EQ(Told(), "o0o3");
    entry->Commit();
    EXPECT_FALSE(mediator->GetFrequency(hertz, 0));
    frequency->SetStringValue(Q("10"));
    EXPECT_EQ(Told(), "o0");
    EXPECT_TRUE(mediator->IsBound());
    EXPECT_TRUE(entry->DeleteValue(Q("count")));
    EXPECT_FALSE(mediator->IsBound());
    EXPECT_EQ(Told(), "o2");
    Of(entry, "comment")->DeleteObservers();
    Of(entry, "comment")->SetStringValue(Q("x"));
    EXPECT_EQ(Told(), "");
    EXPECT_EQ(mediator->GetCommentString(0), Q("x"));
}

TEST_P(MediatorContract, AnEndingListTellsEachMediatorOnceOrWhatItOutlives) {
    for (const bool stays : {false, true}) {
        OwnMediator::staysAtTheEnd = stays;
        while (list->ChildCount() < 2)
            Add(1);
        OwnController own(trail);
        own.Init(Q("/Mediated"));
        Told();
        list->DeleteChildren();
        EXPECT_EQ(own.size(), stays ? 2u : 0u);
        if (stays)
            EXPECT_EQ(Told(), "o18o2o2o2o2o2o18o2o2o2o2o2");
        else
            EXPECT_EQ(Told(), "o18o18o18");
    }
    OwnMediator::staysAtTheEnd = false;
}

INSTANTIATE_TEST_SUITE_P(Entries, MediatorContract, testing::Bool(),
                         [](const auto& made) { return made.param ? "FromShape" : "OneByOne"; });

} // namespace
