#pragma once

#include "controls/frequencystore/common/keys.h"
#include "host/freqlist/frequencynodemediatorctrl.h"

/// Controller of this library's lists: makes one mediator per entry node, of the class that belongs to its
/// mediator type. Owned by the list's handler.
class HalvoNodeMediatorCtrl : public FrequencyNodeMediatorCtrl {
public:
    /// `storeType` is the list's store type and is handed to every mediator.
    HalvoNodeMediatorCtrl(MediatorType type, int storeType);

    MediatorType GetMediatorType() const { return m_type; }
    /// The mediator at a 0-based index in list order, in constant time; null, traced, when there is none.
    FrequencyNodeMediator* GetItemwithIndex(int index);
    QString GetUsageName() const override;
    /// Each frequency of a range of memory channels is an entry of its own.
    FreqStoreXml::ListContent Content() override;

protected:
    Mediator* CreateMediator(Observable* entryNode) override;

private:
    MediatorType m_type;
};
