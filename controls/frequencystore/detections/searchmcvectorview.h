#pragma once

#include "controls/frequencystore/common/sendto.h"
#include "controls/frequencystore/detections/detconvlisthandler.h"
#include "controls/frequencystore/detections/detectionlistviewfactory.h"
#include "controls/frequencystore/detections/searchmcmediator.h"
#include "host/base/traceplace.h"
#include "host/freqlist/buttonbar.h"
#include "host/valuetree/tree.h"

#include <QPointer>

#include <functional>

class PixStateVector;

namespace SearchMC {

/// Where a write that fails is traced: its heading, and the reason.
struct WritePlaces {
    TracePlace heading;
    TracePlace reason;
};
/// Asks for the name of an XML or, with `csv`, a CSV file, whose kind the dialog names, and writes it. A name
/// without the extension gets it; a cancelled dialog writes nothing, nor does one that outlives the view. A
/// failure is traced and told nobody else.
void WriteAskedFile(QWidget* view, const QString& kind, bool csv, const WritePlaces& places,
                    const std::function<void(const QString& file)>& write);

/// A new view over a list of detections.
template <typename View>
FrequencyStoreListView* MakeView(QWidget* parent, const char* name, unsigned listId,
                                 const DetectionPaths& paths, const DetectionTexts& texts) {
    auto* view = new View(parent, texts.settings.isEmpty() ? name : texts.settings.toLatin1().constData());
    view->SetTexts(texts);
    view->SetID(listId);
    view->Set_ValuePath(paths.emissions);
    view->setEmissionMarkedPath(paths.marked);
    return view;
}

} // namespace SearchMC

/// What the views over record lists of detections share. They sort by values, and their selection is what the
/// list of marked emissions holds, if there is one.
template <typename T, typename Adapter>
class SearchMCVectorView : public SearchMCView<T, VectorListView<T, Adapter>> {
public:
    /// By the column's key. The same column in the other direction turns the present order round; false when
    /// there is nothing to do.
    bool Sort(int column, bool ascending) override {
        const bool isColumn = column >= 0 && column < static_cast<int>(this->Columns().size());
        const auto* key =
            isColumn ? SearchMC::KeyOf<T>(this->Columns()[static_cast<size_t>(column)].id) : nullptr;
        return key && this->SortByKey(column, ascending, *key);
    }
    /// The ID of the current detection; -1 without any.
    qint64 GetSelectedId() {
        const T* record = this->Record(this->CurrentRow());
        return record ? static_cast<qint64>(record->GetID()) : -1;
    }

    /// Before the view gets its bar.
    void SetTexts(const DetectionTexts& texts) { m_texts = texts; }
    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override {
        SearchMCView<T, VectorListView<T, Adapter>>::InitFreqStoreWidget(bar);
        if (bar && !m_texts.caption.isEmpty())
            bar->SetCaption(m_texts.caption);
    }
    QString EmptyText() const override {
        return m_texts.emptyText ? m_texts.emptyText() : SearchMC::EmptyText();
    }
    bool TuneToCurrent() override { return tuneToRow(this->CurrentRow()); }

protected:
    SearchMCVectorView(QWidget* parent, const char* name)
        : SearchMCView<T, VectorListView<T, Adapter>>(parent, name) {
        QObject::connect(this, &VectorListViewBase::doubleClicked, this,
                         [this](SortListViewItem* item) { tuneToRow(this->Item2Index(item)); });
    }

    void select(int row) { this->SelectRow(row); }

    /// The value at the path, which need not be there.
    void SetMarkedList(const QString& path) { m_markedPath = path; }
    void MarkSelection() {
        auto* marked = value_cast<ValueList<double>>(Tree::Instance()->GetValue(m_markedPath));
        if (!marked)
            return;
        std::vector<double> frequencies;
        for (const T* record : this->SelectedRecords())
            frequencies.push_back(record->GetFrequency());
        if (frequencies == marked->Elements())
            return;
        marked->GetList() = std::move(frequencies);
        marked->HasChanged(TChangeCode::ValueChanged, this);
    }
    /// Lets the selected detections go into other lists.
    void OfferSending(FreqStoreListViewButtonBar& bar) {
        SendTo::Offer(bar, [view = QPointer(this->GetWidget()), this] {
            QVector<FreqStoreXml::FrequencyStoreEntry> entries;
            if (view) {
                for (const T* record : this->SelectedRecords()) {
                    entries.append(SearchMC::EntryOf(*record));
                    if (const QString comment = this->RecordComment(record->GetID()); !comment.isEmpty())
                        entries.last().SetComment(comment + QStringLiteral(", ") +
                                                  entries.last().GetComment());
                }
            }
            return entries;
        });
    }
    /// Puts the selected records into the store's copy buffer.
    void CopySelected() {
        FreqStore::Instance().ClearFrequencyListCopyStruct();
        for (const T* record : this->SelectedRecords())
            this->AddCopyRow(*record);
    }

private:
    bool tuneToRow(int row) {
        const T* record = this->Record(row);
        if (record)
            ValueListMediator<T, Adapter>(*record).SetFrequency(this);
        return record != nullptr;
    }
    QString m_markedPath;
    DetectionTexts m_texts;
};
