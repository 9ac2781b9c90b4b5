#pragma once

#include "receiver/radioprofile.h"
#include "receiver/receiverlink.h"

#include <QTimer>

#include <chrono>
#include <memory>

/// A radio behind a receiver. All that may wait for the radio is done by a thread of its own, which is let
/// go, not waited for, when this ends: it closes the radio as soon as that lets it.
class HamlibReceiver : public ReceiverLink {
    Q_OBJECT

public:
    /// What becomes of a radio that is lost or cannot be reached: it is tried again, with growing pauses, or
    /// that was all.
    enum class Lost { TriedAgain, GivenUp };

    explicit HamlibReceiver(const RadioProfile& profile, Lost lost = Lost::TriedAgain);
    ~HamlibReceiver() override;

    QString GetName() const override { return m_profile.Title(); }
    void Begin() override;
    void Set(const std::vector<ReceiverWord>& wishes, quint64 serial) override;

    /// Waits until the threads of all radios that were let go have closed them, so that a program can end;
    /// false when some are still held up after that time.
    static bool WaitForAll(std::chrono::milliseconds longest);

private:
    struct Shared;
    friend class RadioThread;

    void hear();
    void noteSilence();

    RadioProfile m_profile;
    Lost m_lost;
    std::shared_ptr<Shared> m_shared; ///< with the thread
    QTimer m_silence;                 ///< runs out when the thread is held up
    bool m_isConnected = false;
};
