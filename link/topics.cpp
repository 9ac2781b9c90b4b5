#include "link/topics.h"

namespace Topics {

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
    return last <= 0 ? QByteArray() : topic.mid(topic.lastIndexOf('/', last - 1) + 1);
}

} // namespace Topics
