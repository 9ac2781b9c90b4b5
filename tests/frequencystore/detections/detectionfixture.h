#pragma once

#include "controls/frequencystore/detections/detconvlisthandler.h"
#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "controls/frequencystore/detections/searchmcextendedvectorlistview.h"
#include "controls/frequencystore/detections/searchmcvectorlistview.h"
#include "host/freqlist/pixstatevector.h"
#include "host/gui/guibase.h"
#include "host/startup/cfgcenter.h"
#include "tests/support/testfolder.h"

#include <gtest/gtest.h>
#include <random>

using Extended = ExtendedDetectionConventional;
using ExtendedAdapter = ExtendedDetectionConventionalAdapter;
using SearchMC::Variant;

inline constexpr double Infinite = std::numeric_limits<double>::infinity();
inline constexpr double NoNumber = std::numeric_limits<double>::quiet_NaN();
inline constexpr char ListPath[] = "/DetectionTest/Emissions";
inline constexpr char OtherPath[] = "/DetectionTest/Others";
inline constexpr char MarkedPath[] = "/DetectionTest/Marked";

template <typename Record = DetectionConventional>
Record detection(unsigned id, double hertz, short level = 30) {
    Record record;
    record.SetID(id);
    record.SetFrequency(hertz);
    record.SetBandwidth(3100);
    record.SetLevel(level);
    record.SetStartTime(1.7e15 + 1e6 * id);
    record.SetStopTime(1.7e15 + 1e6 * id + 2.5e6);
    return record;
}

inline Extended classified(unsigned id, double hertz) {
    auto record = detection<Extended>(id, hertz);
    record.Result() = {7055123.4, 2400,   45.45,   850,    0.25,     3.9, 87,     "FSK",
                       "Baudot",  "2, 4", "RTTY ", "2FSK", "123.25", "5", "11.5", "48.25"};
    return record;
}

template <typename View>
class Opened : public View {
public:
    using View::AllRecords;
    using View::CellText;
    using View::select;
    using View::View;

    std::vector<unsigned> Ids() {
        std::vector<unsigned> ids;
        for (const auto* record : AllRecords())
            ids.push_back(record->GetID());
        return ids;
    }
};

using PlainView = Opened<SearchMCVectorListView>;

/// Records with many equal keys and all that may go wrong in a number or a text.
inline std::vector<Extended> oddRecords(size_t count) {
    std::mt19937 random(11);
    const double numbers[] = {0, -0.0, 1, -7e6, 7e6, 1e300, -1e300, Infinite, -Infinite, NoNumber, 5e-324};
    const char* texts[] = {"",     "FSK",      "FSK 850", "FSK-12345", "FSK-12344",
                           "\xff", "\xc3\xa4", "AM",      "1000",      "9.5"};
    const auto number = [&] { return numbers[random() % std::size(numbers)]; };
    const auto text = [&] { return texts[random() % std::size(texts)]; };
    std::vector<Extended> records;
    for (size_t i = 0; i < count; ++i) {
        auto record = detection<Extended>(static_cast<unsigned>(random()), number(), short(random() % 9));
        record.SetBandwidth(number());
        record.SetStartTime(number());
        record.SetStopTime(number());
        record.Result() = {number(), number(), number(), number(), number(), number(), short(random() % 3),
                           text(),   text(),   text(),   text(),   text(),   text(),   text(),
                           text(),   text()};
        records.push_back(record);
    }
    return records;
}

/// Lists of detections in the tree, the handler bound to them, and a folder for files.
class Detections : public testing::Test, protected TestFolder {
protected:
    void SetUp() override {
        Tree::Instance()->MakeNode(QStringLiteral("/DetectionTest"));
        GuiBase::Instance().SetUseNativeDialogs(false);
        CfgCenter::SetDirectory(m_folder.path());
        DetConvListHandler::Instance()->setEmissionListPath(QLatin1String(ListPath));
        DetConvListHandler::Instance()->setEmissionMarkedPath(QLatin1String(MarkedPath));
    }
    void TearDown() override {
        for (const int id : FreqStore::Instance().GetListIds())
            FreqStore::Instance().RemoveFrequencyListDefinition(id);
        DetConvListHandler::DeleteInstance();
        Tree::Instance()->GetRoot()->DeleteChildren();
    }

    template <typename Record>
    ValueList<Record>& list(const char* path = ListPath) {
        return *GetOrCreateValue<ValueList<Record>>(QLatin1String(path));
    }
    /// Registers a list as the host does and makes its view.
    std::unique_ptr<FrequencyStoreListView> viewOf(int listId) {
        return std::unique_ptr<FrequencyStoreListView>(
            FreqStore::Instance().GetDefinition(listId)->CreateView(nullptr, static_cast<unsigned>(listId)));
    }

    struct MegahertzPerPixel : IHasHMap {
        double MapToPixel(double hertz) const override { return hertz / 1e6; }
        double MapToFrequency(double pixel) const override { return pixel * 1e6; }
    } m_map;
};
