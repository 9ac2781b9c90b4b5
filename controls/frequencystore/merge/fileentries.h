#pragma once

#include "controls/frequencystore/common/keys.h"
#include "host/freqstorexml/frequencystoreentry.h"

#include <QVector>

#include <optional>

/// Reads a file of any kind that one of the lists reads (".sfl", ".ltl", ".noi", ".csv", ".xml", ".pij"),
/// without a list: as interchange entries, which carry what all lists have. `list` is the list that they are
/// for. What the file says nothing about is empty. Empty, told and traced, when the file cannot be read;
/// empty, too, when the operator cancels.
std::optional<QVector<FreqStoreXml::FrequencyStoreEntry>> ReadFileEntries(const QString& path,
                                                                          MediatorType list);
