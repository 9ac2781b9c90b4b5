#include "workstation/ending.h"

#include "host/base/longwork.h"
#include "workstation/unsavedwork.h"

#include <QApplication>
#include <QPointer>

namespace {

constexpr int NotKept = 2;

} // namespace

Ending::Ending(const UnsavedWork& work, std::unique_ptr<NoiKeeper> noi)
    : m_work(work), m_noi(std::move(noi)) {
    connect(&m_signals, &EndSignals::Came, this, [this] { whenNothingRuns(&Ending::end); });
    // The session may go on after this, or end the program without another word.
    connect(qApp, &QGuiApplication::commitDataRequest, this, [this] { whenNothingRuns(&Ending::Keep); });
}

bool Ending::MayClose() {
    if (m_attended)
        return m_work.MayLeave(m_noi ? m_noi->WhatIsKept() : QString()) && (!m_noi || m_noi->MayLeave());
    Keep();
    return true;
}

void Ending::Keep() {
    const bool noiIsKept = !m_noi || m_noi->Keep();
    const bool restIsKept = !m_writeRecovery || m_writeRecovery();
    m_exitCode = noiIsKept && restIsKept ? 0 : NotKept;
}

/// Long work is cancelled first: half of a list is nothing to keep.
void Ending::whenNothingRuns(void (Ending::*act)()) {
    if (LongWork::IsRunning())
        LongWork::Cancel();
    LongWork::WhenDone([ending = QPointer<Ending>(this), act] {
        if (ending)
            (ending->*act)();
    });
}

void Ending::end() {
    m_isEnding = true;
    Keep();
    emit Begins();
    QApplication::exit(m_exitCode); // the loops of open dialogs, too
}

void Ending::Finish() const {
    if (m_noi)
        m_noi->RememberFile();
}
