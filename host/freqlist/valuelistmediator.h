#pragma once

#include "host/freqlist/freqstore.h"
#include "host/freqlist/multiviewmediator.h"
#include "host/freqlist/vectorlistview.h"

/// A store item that is a record: it has a frequency, a bandwidth and a type, and nothing that changes.
class RecordItem : public IFrequencyStoreItem {
public:
    bool GetComment(QString&, int) override { return false; }
    bool GetTip(QString&, int) override { return false; }
    bool GetDemodulation(QString&, int) override { return false; }
    bool GetSquelchState(QString&, int) override { return false; }
    bool GetSquelchValue(int&, int) override { return false; }
    bool GetAttenuation(QString&, int) override { return false; }
    bool GetAfc(QString&, int) override { return false; }
    void SetFrequency(QWidget* view) override { FreqStore::Instance().Tune(*this, view, true); }
    void UpdateMyViewItems(FrequencyNodeListView*) override {}
    void UpdateAllViewItems() override {}
    int GetSubItemId() override { return 0; }
    int IterateSubItems(bool& atEnd) override {
        atEnd = true;
        return 0;
    }
};

/// One record that is shown or copied, as the store sees it. It holds the record's content as it was when it
/// was made, so it stays good whatever becomes of the list. `Adapter` knows the texts of the fields.
template <typename T, typename Adapter>
class ValueListMediator final : public RecordItem {
public:
    explicit ValueListMediator(const T& record) : m_record(record) {}

    const T& GetRecord() const { return m_record; }
    /// The text of a field by its name; empty when the adapter knows no such field.
    QString GetFieldText(const QString& field) const { return Adapter::FieldText(m_record, field); }

    bool GetFrequency(double& frequency, int) override {
        frequency = m_record.GetFrequency();
        return true;
    }
    bool GetBandwidth(double& bandwidth, int) override {
        bandwidth = m_record.GetBandwidth();
        return true;
    }
    bool GetType(char& type, int) override {
        type = Adapter::Type;
        return true;
    }

private:
    T m_record;
};

/// List view whose rows carry mediators. Columns are bound to field names of the adapter and sort by their
/// compare functions; a double click and Return tune the receiver to the record.
template <typename T, typename Adapter>
class ValueListMediatorListView : public VectorListView<T, Adapter> {
public:
    using Mediator = ValueListMediator<T, Adapter>;

    ValueListMediatorListView(QWidget* parent, unsigned listId, const char* name)
        : VectorListView<T, Adapter>(parent, name) {
        this->SetID(listId);
        QObject::connect(this, &VectorListViewBase::doubleClicked, this, [this](SortListViewItem* item) {
            if (item)
                static_cast<Row*>(item)->mediator.SetFrequency(this);
        });
    }

    bool TuneToCurrent() override {
        const T* record = this->Record(this->CurrentRow());
        if (record)
            Mediator(*record).SetFrequency(this);
        return record != nullptr;
    }
    /// Mediators of the selected records, in the order shown.
    std::vector<Mediator> SelectedMediators() {
        std::vector<Mediator> mediators;
        for (const T* record : this->SelectedRecords())
            mediators.emplace_back(*record);
        return mediators;
    }

protected:
    struct Row final : SortListViewItem {
        Row(const QStringList& texts, const T& record)
            : SortListViewItem(nullptr, texts, false), mediator(record) {}

        Mediator mediator;
    };

    SortListViewItem* CreateItem(int row) final {
        const T& record = *this->Record(row);
        return new Row(this->RowTexts(record), record);
    }
};
