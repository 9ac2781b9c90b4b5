#pragma once

#include "host/base/observer.h"

#include <functional>
#include <vector>

/// An observer that records what it is told, and may do something on the way.
class Recorder : public IObserver {
public:
    void Update(Observable* subject, TChangeCode code) override {
        codes.push_back(static_cast<int>(code));
        subjects.push_back(subject);
        if (onUpdate)
            onUpdate(subject, code);
    }

    std::vector<int> codes;
    std::vector<Observable*> subjects;
    std::function<void(Observable*, TChangeCode)> onUpdate;
};
