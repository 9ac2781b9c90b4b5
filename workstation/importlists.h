#pragma once

#include "controls/frequencystore/files/filegate.h"

#include <QString>

#include <vector>

class GeneralListParser;
class HalvoNodeMediatorCtrl;

/// A list of the store that takes the entries of other programs' files. Nothing of it is owned.
struct ImportList {
    FileGate::List list;
    unsigned id; ///< in the store
    QString name;
    HalvoNodeMediatorCtrl* controller;
    GeneralListParser* parser;

    qsizetype Count() const;
    /// Why it takes no entries at present, in place of those that are there or behind them; a sentence for
    /// the operator, empty when it does.
    QString WhyOff(bool replaces) const;
    /// Takes away what the parser leaves there when it takes a file: channels are added to those of the job.
    void MakeRoom() const;
};

/// Targets, memory channels and frequencies of interest, as far as they are registered.
std::vector<ImportList> ImportLists();
