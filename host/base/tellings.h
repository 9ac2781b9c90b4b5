#pragma once

#include <functional>
#include <vector>

/// What a thread beside the GUI thread has to say: its problems and traces wait here, in their order, since
/// those who receive them live on the GUI thread. One thread adds at a time.
class Tellings {
public:
    /// While it lives, all that this thread tells goes to `tellings`, which the caller owns.
    class Scope {
    public:
        explicit Scope(Tellings& tellings);
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope();

    private:
        Tellings* m_before;
    };

    /// Those of this thread; null when it tells directly.
    static Tellings* OfThisThread();

    void Add(std::function<void()> tell) { m_waiting.push_back(std::move(tell)); }
    /// Tells what waits, on the thread that calls.
    void TellAll();

private:
    std::vector<std::function<void()>> m_waiting;
};
