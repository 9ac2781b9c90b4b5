#pragma once

#include "controls/frequencystore/common/entrylistview.h"

#include <QPointer>

class ListClient;
class ListReader;
struct ShareKind;

/// View of a list that another seat serves. Its actions work on the entries, and write copies of them into
/// files; no file becomes the list's.
class ShareSiteView : public EntryListView {
    Q_OBJECT

public:
    /// None is owned; all live as long as the list is registered.
    struct Source {
        const ShareKind* kind;
        Node* node;
        const ListClient* client;
        QPointer<const ListReader> reader; ///< of the client
        QString title;
    };
    /// Begins the name under which such a list's columns are remembered.
    static constexpr QLatin1String SettingsName{"ShareSiteView"};
    /// What an empty one says; the reader may have ended.
    static QString TextOfNone(const ListReader* reader);

    ShareSiteView(QWidget* parent, unsigned listId, const Source& source);

    void InitFreqStoreWidget(FreqStoreListViewButtonBar* bar) override;
    QString EmptyText() const override;
    QString WhyOff(int action) const override;

protected:
    bool HasEditor() const override { return true; }

private:
    void addNew();
    void edit();
    void copy();
    void paste();
    void save();
    void exportCsv();
    /// Asks for a file and writes the entries there.
    void write(const QString& title, const QString& filter, const QString& suffix,
               const std::function<bool(FrequencyNodeMediatorCtrl&, const QString&)>& write);

    Source m_source;
};
