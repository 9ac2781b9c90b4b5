#pragma once

#include "host/freqlist/copystruct.h"
#include "host/freqlist/listdefinition.h"

#include <QObject>

#include <deque>
#include <functional>
#include <map>
#include <memory>

class IFrequencyStoreItem;
class QClipboard;

/// The process-wide store of frequency lists. Lists register themselves; windows show whatever is registered.
/// It also holds what lists exchange: the clipboard, on which a copy is frequency-store XML text, and the
/// copy buffer with the older form of a copy. Never destroyed.
///
/// \code
/// FreqStore& store = FreqStore::Instance();
/// const int listId = store.RegisterList(registration);
/// const bool isThere = store.GetDefinition(listId) != nullptr; // true
/// \endcode
class FreqStore : public QObject {
    Q_OBJECT

public:
    static FreqStore& Instance();

    /// Registers a list and returns its identifier, which is never 0.
    int RegisterList(ListRegistration registration);
    /// Registers a list whose functions are plain functions. `ListRegistration` describes the arguments.
    int AddFrequencyListDefinition(const QString& name, const QPixmap& icon, PixStateFactory pixStateFactory,
                                   bool available4WideView, bool available4SimpleView,
                                   MultiViewMediatorCtrl* controller, ViewFactory viewFactory,
                                   RecycleFunction recycle, int capabilityId);
    /// Registers a definition object; the store takes ownership.
    int AddFrequencyListDefinition(IFrequencyListDefinition* definition);
    /// Takes a list out of the store; windows drop its tab. An unknown identifier is no error.
    void RemoveFrequencyListDefinition(int listId);

    /// The definition of a registered list, or null.
    IFrequencyListDefinition* GetDefinition(int listId) const;
    /// Identifiers of the registered lists, in order of registration.
    std::vector<int> GetListIds() const;
    /// The controller of a registered list; null when it has none or has ended.
    MultiViewMediatorCtrl* GetFrequencies(unsigned listId) const;
    /// Forgets a controller that ends: its lists have none from now on.
    void RemoveController(const MultiViewMediatorCtrl* controller);

    /// The store-wide identifier of a copy column name; the same name has the same identifier for good.
    unsigned GetCopyStructId(const QString& columnName);
    /// Appends one row to the copy buffer.
    void AddFrequencyListCopyStruct(const FrequencyListCopyStruct& row);
    /// Returns the next row of the copy buffer, or null behind the last one; the call after that begins
    /// again. `more` says whether another row follows. A row is valid until the buffer changes.
    FrequencyListCopyStruct* GetFrequencyListCopyStruct(bool& more);
    void ClearFrequencyListCopyStruct();

    /// The application's clipboard; null without a GUI.
    QClipboard* GetClipboard() const;
    /// Puts a copy on the clipboard, and reads its text. Without a GUI the store keeps the text itself.
    void SetClipboardText(const QString& text);
    QString GetClipboardText() const;

    /// The function that tunes the receiver to an item, with all the item's settings or to its frequency
    /// alone. The owner of a receiver sets it; without it `Tune` does nothing.
    using Tuner = std::function<void(IFrequencyStoreItem& item, QWidget* view, bool allSettings)>;
    void SetTuner(Tuner tuner) { m_tuner = std::move(tuner); }
    void Tune(IFrequencyStoreItem& item, QWidget* view, bool allSettings) const;
    /// Says that a file holds all that a list has: what the operator did to it is not asked about any more.
    /// A list that the program saves need not say it.
    void NoteSaved(int listId) { emit ListSaved(listId); }

signals:
    void ListAdded(int listId);
    void ListRemoved(int listId);
    void ListSaved(int listId);
    /// What a list's action did, as a sentence for the operator.
    void Told(const QString& text);

private:
    FreqStore() = default;

    std::map<int, std::unique_ptr<IFrequencyListDefinition>> m_lists;
    int m_lastId = 0;
    QHash<QString, unsigned> m_copyIds;
    std::deque<FrequencyListCopyStruct> m_copyRows;
    size_t m_nextCopyRow = 0;
    QString m_textWithoutClipboard;
    Tuner m_tuner;
};
