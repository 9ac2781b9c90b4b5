#include "workstation/sharerecordview.h"

#include "controls/frequencystore/detections/searchmcextendedvectorlistview.h"
#include "controls/frequencystore/detections/searchmcvectorlistview.h"
#include "host/freqlist/buttonbar.h"

#include <QCoreApplication>

namespace {

/// A view of detections of another seat, which comes to nobody's search here.
template <typename View>
class SharedDetectionsView : public View {
public:
    using View::View;

    void SetTitle(const QString& title) { m_title = title; }
    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override {
        View::InitFreqStoreWidget(bar);
        if (bar)
            bar->SetCaption(m_title);
    }
    QString EmptyText() const override {
        return QCoreApplication::translate("ShareSiteView",
                                           "Detections come when the seat that serves this list has some.");
    }

private:
    QString m_title;
};

template <typename Record>
ValueBase* makeList(const QString& path) {
    return GetOrCreateValue<ValueList<Record>>(path);
}

/// Settings of columns are remembered under the name of the view.
template <typename View, const auto& Name>
FrequencyStoreListView* makeView(QWidget* parent, unsigned listId, const DetectionPaths& paths,
                                 const QString& title) {
    using Shared = SharedDetectionsView<View>;
    FrequencyStoreListView* const view = SearchMC::MakeView<Shared>(parent, Name, listId, paths);
    static_cast<Shared*>(view)->SetTitle(title);
    return view;
}

template <typename Record, typename View, const auto& Name>
constexpr ShareRecordKind KindOf{makeList<Record>, MakeDetectionLine<Record>, makeView<View, Name>};

constexpr char PlainName[] = "SharedDetections";
constexpr char HFName[] = "SharedDetectionsHF";
constexpr char VUHFName[] = "SharedDetectionsVUHF";

} // namespace

const ShareRecordKind PlainDetections = KindOf<DetectionConventional, SearchMCVectorListView, PlainName>;
const ShareRecordKind DetectionsOfHF =
    KindOf<ExtendedDetectionConventional, SearchMCExtendedVectorListViewHF, HFName>;
const ShareRecordKind DetectionsOfVUHF =
    KindOf<ExtendedDetectionConventional, SearchMCExtendedVectorListViewVUHF, VUHFName>;
