#pragma once

#include <QByteArray>
#include <QString>

/// Where the messages of a site and of its lists go. Below "freqstore/SITE":
///
///     call                          asks all seats to say that they are there
///     seats/USER/SEAT               presence
///     seats/USER/SEAT/echo          a seat's messages to itself
///     lists/LIST/claim              who serves the list, retained
///     lists/LIST/manifest           retained, as are the next four
///     lists/LIST/layout/N, chunk/N, log/N, file
///     lists/LIST/request/USER/SEAT  to the server
///     lists/LIST/answer/USER/SEAT   from the server
namespace Topics {

/// A part of a topic: "+", "#", "/", "%" and what is no plain character are escaped as "%" and two digits for
/// each byte of UTF-8.
QByteArray Escaped(const QString& name);
QString Unescaped(QByteArrayView part);

/// Of a site; the name need not be escaped.
QByteArray Site(const QString& site);
QByteArray List(const QByteArray& site, const QString& list);
QByteArray Numbered(const QByteArray& base, quint64 number);
/// The number at the end of a topic; false when there is none.
bool NumberOf(const QByteArray& topic, quint64& number);
/// The last two parts of a topic: a seat as "USER/SEAT", escaped. Empty when that is longer than any name of
/// ours: whoever keeps seats keeps their names.
QByteArray SeatOf(const QByteArray& topic);

} // namespace Topics
