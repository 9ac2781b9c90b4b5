#pragma once

#include "controls/frequencystore/common/halvonodemediatorctrl.h"
#include "controls/frequencystore/common/keys.h"
#include "host/valuetree/tree.h"
#include "host/valuetree/valueselection.h"
#include "tests/support/text.h"
#include "tests/support/traces.h"

#include <gtest/gtest.h>
#include <memory>

/// A list of memory channels in the tree with its controller, without a handler.
class MemoryChannels : public testing::Test {
protected:
    void Start(MediatorType type) {
        m_type = type;
        m_list = Tree::Instance()->MakeNode(Q("/Lists/Memory"));
        m_controller = std::make_unique<HalvoNodeMediatorCtrl>(type, 4);
        m_controller->IncrementVisibleCnt();
        m_controller->Init(m_list->GetPathName());
    }
    void TearDown() override {
        m_controller.reset();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }

    template <typename V>
    static V& Own(Node* node, const char* key) {
        return *GetOrCreateValue<V>(*node, true, Names::Intern(Q(key)));
    }
    static void MakeInt(Node* node, const char* key, int min, int max, int value) {
        auto& number = Own<ValueNumeric<int>>(node, key);
        number.SetMinMax(min, max, 1);
        number.SetValue(value);
    }
    /// Appends a channel with all values of its kind.
    Node* AddChannel(double frequency, const char* comment) {
        auto* node = new Node(m_list, Q("MemItem"));
        m_list->AddItemUnique(node);
        Own<ValueNumeric<double>>(node, "frequency").SetMinMax(9e3, 3e9, 1);
        Own<ValueNumeric<double>>(node, "frequency").SetValue(frequency);
        Own<Value<QString>>(node, "comment").SetValue(Q(comment));
        Own<ValueNumeric<double>>(node, "bandwidthsel").SetMinMax(100, 20e3, 1);
        Own<ValueNumeric<double>>(node, "bandwidthsel").SetValue(3000);
        Own<ValueSelection>(node, "demodulation").AddItems({Q("NONE"), Q("USB"), Q("CW")});
        MakeInt(node, "threshold", -40, 110, 10);
        Own<Value<char>>(node, "type").SetValue(109);
        Own<Value<bool>>(node, "range");
        MakeInt(node, "rangecounter", -1, 1000, -1);
        Own<ValueList<double>>(node, "rangefrequencies");
        if (m_type == MediatorType::MemoryHF) {
            Own<ValueSelection>(node, "outputifpath").AddItem(Q("48.0 kHz"), 48, 0);
            Own<ValueSelection>(node, "outputifpath").AddItem(Q("455.0 kHz"), 455, 1);
            MakeInt(node, "shift", 26, 39974, 20000);
            MakeInt(node, "bfofrequency", -10000, 10000, 800);
        } else {
            for (const char* flag : {"afc", "usesquelch", "useattenuation"})
                Own<Value<bool>>(node, flag);
            MakeInt(node, "attenuation", 0, 40, 5);
            MakeInt(node, "antennaid", 0, 99, 2);
        }
        return node;
    }
    template <typename M = FrequencyNodeMediator>
    M* Mediator(int index) {
        m_controller->ForceUpdateNow();
        return dynamic_cast<M*>(m_controller->GetItemwithIndex(index));
    }

    MediatorType m_type = MediatorType::MemoryHF;
    Node* m_list = nullptr;
    std::unique_ptr<HalvoNodeMediatorCtrl> m_controller;
};
