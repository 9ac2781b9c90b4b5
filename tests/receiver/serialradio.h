#pragma once

#include <QFile>
#include <QMap>
#include <QSocketNotifier>
#include <QStringList>

#include <cstdlib>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <memory>
#include <termios.h>
#include <unistd.h>

/// A TS-2000 at a pseudo terminal, whose name is `path` while it is plugged in.
class SerialRadio {
public:
    static constexpr int Model = 2014;

    explicit SerialRadio(const QString& path) : m_path(path) { Plug(); }
    ~SerialRadio() { Pull(); }

    void Plug() {
        m_radio = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK);
        ASSERT_TRUE(m_radio >= 0 && grantpt(m_radio) == 0 && unlockpt(m_radio) == 0);
        const QByteArray name = ptsname(m_radio);
        m_line = open(name.constData(), O_RDWR | O_NOCTTY); // else the line hangs up with whoever uses it
        termios raw{};
        cfmakeraw(&raw);
        ASSERT_EQ(tcsetattr(m_line, TCSANOW, &raw), 0);
        ASSERT_TRUE(QFile::link(QString::fromLocal8Bit(name), m_path));
        m_notifier = std::make_unique<QSocketNotifier>(m_radio, QSocketNotifier::Read);
        QObject::connect(m_notifier.get(), &QSocketNotifier::activated, [this] { hear(); });
    }
    void Pull() {
        if (!m_notifier)
            return;
        m_notifier.reset();
        close(m_line);
        close(m_radio);
        QFile::remove(m_path);
    }

    /// The settings by the commands that ask for them.
    QMap<QByteArray, QByteArray> settings{{"ID", "019"},
                                          {"PS", "1"},
                                          {"AI", "0"},
                                          {"FA", "00007055000"},
                                          {"FB", "00014250000"},
                                          {"MD", "2"},
                                          {"FR", "0"},
                                          {"FT", "0"},
                                          {"SM0", "0015"},
                                          {"SQ0", "000"},
                                          {"RA", "0000"},
                                          {"AN", "1"},
                                          {"SA", "0000000        "},
                                          {"RT", "0"},
                                          {"XT", "0"},
                                          {"SH", "05"},
                                          {"SL", "02"},
                                          {"FW", "0000"},
                                          {"DC", "00"},
                                          {"BY", "00"},
                                          {"TN", "01"},
                                          {"CT", "0"}};
    QStringList set; ///< what was set, in order

private:
    void hear() {
        char bytes[256];
        const ssize_t count = read(m_radio, bytes, sizeof bytes);
        m_heard += QByteArray(bytes, count > 0 ? count : 0);
        for (qsizetype end = 0; (end = m_heard.indexOf(';')) >= 0; m_heard.remove(0, end + 1))
            take(m_heard.left(end));
    }
    void take(const QByteArray& command) {
        QByteArray answer;
        if (command == "IF")
            answer = "IF" + settings["FA"] + "     +0000" + settings["RT"] + "0000" + "0" + settings["MD"] +
                     "0000" + "000";
        else if (settings.contains(command))
            answer = command + settings[command];
        else if (settings.contains(command.left(2)) && command.size() > 2) {
            settings[command.left(2)] = command.mid(2);
            set << QString::fromLatin1(command);
        } else {
            EXPECT_FALSE(command.startsWith("TX")) << "nothing is sent";
            answer = "?";
        }
        if (!answer.isEmpty()) {
            answer += ';';
            EXPECT_EQ(write(m_radio, answer.constData(), static_cast<size_t>(answer.size())), answer.size());
        }
    }

    QString m_path;
    int m_radio = -1;
    int m_line = -1;
    QByteArray m_heard;
    std::unique_ptr<QSocketNotifier> m_notifier;
};
