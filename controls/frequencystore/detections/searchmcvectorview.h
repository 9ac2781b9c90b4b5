#pragma once

#include "controls/frequencystore/common/sendto.h"
#include "controls/frequencystore/detections/detconvlisthandler.h"
#include "controls/frequencystore/detections/searchmcmediator.h"
#include "host/base/traceplace.h"
#include "host/valuetree/tree.h"

#include <QPointer>

#include <functional>

class PixStateVector;

namespace SearchMC {

/// Asks for the name of a file to write, and writes it. A name without the extension gets it; a cancelled
/// dialog writes nothing. A failure is traced under the heading, at the places given, and told nobody else.
struct FileAction {
    QString caption;
    QString filter;
    QString extension;
    TracePlace headingPlace;
    TracePlace reasonPlace;
    QString heading;
};
void WriteAskedFile(const FileAction& action, const std::function<void(const QString& file)>& write);

/// A new view over a list of detections.
template <typename View>
FrequencyStoreListView* MakeView(QWidget* parent, const char* name, unsigned listId,
                                 const DetectionPaths& paths) {
    auto* view = new View(parent, name);
    view->SetID(listId);
    view->Set_ValuePath(paths.emissions);
    view->setEmissionMarkedPath(paths.marked);
    return view;
}

} // namespace SearchMC

/// What the views over record lists of detections share. Their selection is what the list of marked emissions
/// holds, if there is one.
template <typename T, typename Adapter>
class SearchMCVectorView : public VectorListView<T, Adapter> {
public:
    /// The ID of the current detection; -1 without any.
    qint64 GetSelectedId() {
        const T* record = this->Record(this->CurrentRow());
        return record ? static_cast<qint64>(record->GetID()) : -1;
    }

    bool TuneToCurrent() override { return tuneToRow(this->CurrentRow()); }

protected:
    SearchMCVectorView(QWidget* parent, const char* name) : VectorListView<T, Adapter>(parent, name) {
        QObject::connect(this, &VectorListViewBase::doubleClicked, this,
                         [this](SortListViewItem* item) { tuneToRow(this->Item2Index(item)); });
    }

    void AddColumns(std::span<const DetectionColumn> columns) {
        for (const DetectionColumn& column : columns)
            this->AddColumn(SearchMC::ColumnTitle(column), QString::fromLatin1(column.field), column.compare);
        SearchMC::ArrangeList(*this, columns);
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
                for (const T* record : this->SelectedRecords())
                    entries.append(SearchMC::EntryOf(*record));
            }
            return entries;
        });
    }
    /// Hands one row per selected record to the store's copy buffer.
    template <typename Fill>
    void CopySelected(Fill fill) {
        FreqStore::Instance().ClearFrequencyListCopyStruct();
        for (const T* record : this->SelectedRecords()) {
            FrequencyListCopyStruct row;
            fill(*record, row);
            FreqStore::Instance().AddFrequencyListCopyStruct(row);
        }
    }

private:
    bool tuneToRow(int row) {
        const T* record = this->Record(row);
        if (record)
            ValueListMediator<T, Adapter>(*record).SetFrequency(this);
        return record != nullptr;
    }
    QString m_markedPath;
};
