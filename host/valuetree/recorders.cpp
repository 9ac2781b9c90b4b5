#include "host/valuetree/recorders.h"

#include "host/valuetree/changerecorder.h"

#include <algorithm>
#include <vector>

namespace Recorders {
namespace {

/// Hands on to all. It is active only while there is more than one.
class All final : public ChangeRecorder {
public:
    void Attached(Node& child) override {
        forEach([&](ChangeRecorder& recorder) { recorder.Attached(child); });
    }
    NodeKeeper* Detaching(Node& child) override {
        NodeKeeper* const keeper = action ? action->Detaching(child) : nullptr;
        for (ChangeRecorder* recorder : lasting)
            recorder->Detaching(child);
        return keeper;
    }
    void Changing(ValueBase& value, IObserver* originator) override {
        forEach([&](ChangeRecorder& recorder) { recorder.Changing(value, originator); });
    }

    void Activate() {
        ChangeRecorder* const single = lasting.empty() ? action : action ? nullptr : lasting.front();
        const bool several = lasting.size() + (action ? 1 : 0) > 1;
        ChangeRecorder::SetActive(several ? this : single);
    }

    ChangeRecorder* action = nullptr;
    std::vector<ChangeRecorder*> lasting;

private:
    template <typename Tell>
    void forEach(Tell tell) {
        if (action)
            tell(*action);
        for (ChangeRecorder* recorder : lasting)
            tell(*recorder);
    }
};

All& all() {
    static auto* const recorders = new All;
    return *recorders;
}

} // namespace

void SetForAction(ChangeRecorder* recorder) {
    all().action = recorder;
    all().Activate();
}

void Add(ChangeRecorder& recorder) {
    all().lasting.push_back(&recorder);
    all().Activate();
}

void Remove(ChangeRecorder& recorder) {
    std::erase(all().lasting, &recorder);
    all().Activate();
}

} // namespace Recorders
