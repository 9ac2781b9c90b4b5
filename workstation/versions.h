#pragma once

#include "host/report/fileversions.h"
#include "host/report/writeguard.h"

#include <QStringList>

#include <functional>

/// Keeps a version of each file that the program saves: what it held before, if nobody kept that yet, and
/// what it holds then. A version that cannot be kept is told, and stops no save. One such object stands
/// before all writers while it lives.
class Versions : private REPORTGENERATOR::WriteGuard {
public:
    using Answer = REPORTGENERATOR::WriteGuard::Answer;
    /// Asks what to do about a file that another program has changed, before it is replaced.
    using Question = std::function<Answer(const QString& path)>;

    explicit Versions(const QString& dataFolder);
    ~Versions() override;
    Versions(const Versions&) = delete;
    Versions& operator=(const Versions&) = delete;

    FileVersions& GetStore() { return m_store; }
    /// Without a question such a file stays, and what is new stands beside it.
    void SetQuestion(Question question) { m_question = std::move(question); }
    /// Who is told of a file that is about to be replaced by the one `aside`, which keeps its time; `aside`
    /// is the file itself when that holds the same bytes and stays.
    using Follower = std::function<void(const QString& path, const QString& aside)>;
    void SetFollower(Follower follower) { m_follower = std::move(follower); }

    /// While one lives, files that are written are nobody's: no version is kept.
    class Pause {
    public:
        Pause() { ++count; }
        ~Pause() { --count; }
        Pause(const Pause&) = delete;
        Pause& operator=(const Pause&) = delete;

    private:
        friend Versions;
        inline static int count = 0;
    };

private:
    Answer FileIsChanged(const QString& path) override;
    void Replacing(const QString& path, const QString& aside) override;
    void Unchanged(const QString& path) override;
    void Replaced(const QString& path, qint64 entries) override;
    void keep(const QString& path, qint64 entries);

    FileVersions m_store;
    Question m_question;
    Follower m_follower;
    WriteGuard* m_before;
    QString m_told; ///< the last failure, which is told once
};
