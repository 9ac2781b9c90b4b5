#pragma once

#include "controls/frequencystore/targets/targetlisthandler.h"
#include "host/base/numbers.h"
#include "host/valuetree/tree.h"

#include <QFile>
#include <QStringEncoder>
#include <QTemporaryDir>

/// Lines of a target list file.
inline QString linesOf(int count) {
    static const QString demodulations[] = {QStringLiteral("USB"), QStringLiteral("AM"),
                                            QStringLiteral("CW")};
    static const QString classes[] = {QStringLiteral("not classified"), QStringLiteral("low"),
                                      QStringLiteral("high")};
    QString text;
    text.reserve(count * 80);
    for (int i = 0; i < count; ++i) {
        const auto place = static_cast<double>(i * 104729LL % count);
        Quor::AppendFixed(text, 100000.0 + place * 137.0, 6);
        text += QStringLiteral("\t2700.000000\tStation %1\t").arg((i * 7919) % count);
        text += demodulations[i % 3] + QStringLiteral("\tp\t") + classes[i % 3] + QLatin1Char('\t');
        text += QString::number(i % 11 + 1) + QStringLiteral("\t\n");
    }
    return text;
}

/// The files and the list that all figures are taken of.
class Bench {
public:
    static Bench& Get() {
        static auto* const bench = new Bench;
        return *bench;
    }
    QString Ltl(int count) {
        const QString path = m_dir.filePath(QStringLiteral("list%1.ltl").arg(count));
        if (!QFile::exists(path)) {
            QFile file(path);
            file.open(QIODevice::WriteOnly);
            QStringEncoder encoder(QStringConverter::Utf16LE, QStringConverter::Flag::WriteBom);
            file.write(encoder.encode(linesOf(count)));
        }
        return path;
    }
    QString File(const char* name) const { return m_dir.filePath(QString::fromLatin1(name)); }
    TargetListHandler& List(int count) {
        TargetListHandler& handler = *TargetListHandler::Instance();
        if (std::exchange(m_loaded, count) != count)
            handler.ReadFile(Ltl(count));
        return handler;
    }
    void Forget() { m_loaded = -1; }
    unsigned ListId() const { return m_listId; }

private:
    Bench() {
        Node* node = Tree::Instance()->MakeNode(QStringLiteral("/Lists/Targets"));
        TargetListHandler::Instance()->Init(node, false);
        m_listId = static_cast<unsigned>(TargetListHandler::Instance()->AddToFreqStore());
    }

    QTemporaryDir m_dir;
    unsigned m_listId;
    int m_loaded = 0;
};
