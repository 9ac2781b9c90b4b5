#include "link/topics.h"

namespace Topics {
namespace {

constexpr qsizetype LongestSeat = 1000;

} // namespace

QByteArray Escaped(const QString& name) {
    return name.toUtf8().toPercentEncoding(" ");
}

QString Unescaped(QByteArrayView part) {
    return QString::fromUtf8(QByteArray::fromPercentEncoding(part.toByteArray()));
}

QByteArray Site(const QString& site) {
    return "freqstore/" + Escaped(site);
}

QByteArray List(const QByteArray& site, const QString& list) {
    return site + "/lists/" + Escaped(list);
}

QByteArray Numbered(const QByteArray& base, quint64 number) {
    return base + '/' + QByteArray::number(number);
}

bool NumberOf(const QByteArray& topic, quint64& number) {
    bool ok = false;
    number = topic.mid(topic.lastIndexOf('/') + 1).toULongLong(&ok);
    return ok;
}

QByteArray SeatOf(const QByteArray& topic) {
    const qsizetype last = topic.lastIndexOf('/');
    const qsizetype begin = last <= 0 ? topic.size() : topic.lastIndexOf('/', last - 1) + 1;
    return topic.size() - begin > LongestSeat ? QByteArray() : topic.mid(begin);
}

} // namespace Topics
