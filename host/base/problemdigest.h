#pragma once

#include "host/base/problems.h"

#include <QHash>

#include <vector>

/// Keeps many problems of one kind from flooding the operator. Problems are of one kind when they are of one
/// file and their reasons differ only in numbers and quoted texts. The first few are told at once. The others
/// are held back, and `Flush` tells them as one: "file:line: reason (and 72 more like it, to line 812)", with
/// the first of them.
///
/// Problems that name no file of their own, as those of exceptions, are always told at once.
class ProblemDigest {
public:
    /// How many of a kind are told one by one.
    static constexpr qint64 ToldAtOnce = 3;

    /// `tell` gets what the operator sees. The `count` of a problem says how many it stands for.
    explicit ProblemDigest(Problems::Sink tell) : m_tell(std::move(tell)) {}
    ProblemDigest(const ProblemDigest&) = delete;
    ProblemDigest& operator=(const ProblemDigest&) = delete;
    ~ProblemDigest() { Flush(); }

    void Add(const Problem& problem);
    /// Tells what is held back and forgets all kinds; whoever adds problems calls it when a reading is over.
    void Flush();

private:
    struct Kind {
        qint64 told = 0;
        Problem held; ///< the first one held back; its count is that of all
        qint64 lastLine = 0;
    };

    Problems::Sink m_tell;
    QHash<QString, size_t> m_places; ///< in `m_kinds`, by file and the shape of the reason
    std::vector<Kind> m_kinds;       ///< in the order in which they came
};
