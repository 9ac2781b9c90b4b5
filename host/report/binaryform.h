#pragma once

#include <QByteArray>
#include <QString>

namespace REPORTGENERATOR {

class IRGObject;

/// The record's bytes: a mark, the record's name and object type, then for each set member its number in the
/// record's table and its value, little-endian. Members are only ever added at a table's end, so that old
/// bytes stay readable.
QByteArray ToBinary(const IRGObject& object);
/// Fills an empty record. Throws RGException with the reason when the bytes are no such record.
void FromBinary(const QByteArray& bytes, IRGObject& object);

QByteArray Compress(const QByteArray& binary);
bool IsCompressed(const QByteArray& bytes);
/// Throws RGException when the bytes are damaged or claim to be more than such bytes can be.
QByteArray Decompress(const QByteArray& bytes);

} // namespace REPORTGENERATOR
