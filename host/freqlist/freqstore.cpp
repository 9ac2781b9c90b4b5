#include "host/freqlist/freqstore.h"

#include <QClipboard>
#include <QGuiApplication>

FreqStore& FreqStore::Instance() {
    static FreqStore* const store = new FreqStore;
    return *store;
}

int FreqStore::RegisterList(ListRegistration registration) {
    return AddFrequencyListDefinition(new FrequencyListDefinition(std::move(registration)));
}

int FreqStore::AddFrequencyListDefinition(const QString& name, const QPixmap& icon,
                                          PixStateFactory pixStateFactory, bool available4WideView,
                                          bool available4SimpleView, MultiViewMediatorCtrl* controller,
                                          ViewFactory viewFactory, RecycleFunction recycle,
                                          int capabilityId) {
    return RegisterList({name, icon, pixStateFactory, available4WideView, available4SimpleView, controller,
                         viewFactory, recycle, capabilityId});
}

int FreqStore::AddFrequencyListDefinition(IFrequencyListDefinition* definition) {
    const int id = ++m_lastId;
    m_lists.emplace(id, definition);
    emit ListAdded(id);
    return id;
}

void FreqStore::RemoveFrequencyListDefinition(int listId) {
    const auto list = m_lists.extract(listId);
    if (!list.empty())
        emit ListRemoved(listId);
}

IFrequencyListDefinition* FreqStore::GetDefinition(int listId) const {
    const auto found = m_lists.find(listId);
    return found == m_lists.end() ? nullptr : found->second.get();
}

std::vector<int> FreqStore::GetListIds() const {
    std::vector<int> ids;
    for (const auto& [id, definition] : m_lists)
        ids.push_back(id);
    return ids;
}

MultiViewMediatorCtrl* FreqStore::GetFrequencies(unsigned listId) const {
    const IFrequencyListDefinition* definition = GetDefinition(static_cast<int>(listId));
    return definition ? definition->GetFrequencyNodeMediatorCtrl() : nullptr;
}

void FreqStore::RemoveController(const MultiViewMediatorCtrl* controller) {
    for (const auto& [id, definition] : m_lists) {
        if (definition->GetFrequencyNodeMediatorCtrl() == controller)
            definition->SetFrequencyNodeMediatorCtrl(nullptr);
    }
}

unsigned FreqStore::GetCopyStructId(const QString& columnName) {
    const auto found = m_copyIds.constFind(columnName);
    if (found != m_copyIds.constEnd())
        return *found;
    const auto id = static_cast<unsigned>(m_copyIds.size() + 1);
    m_copyIds.insert(columnName, id);
    return id;
}

void FreqStore::AddFrequencyListCopyStruct(const FrequencyListCopyStruct& row) {
    m_copyRows.push_back(row);
}

FrequencyListCopyStruct* FreqStore::GetFrequencyListCopyStruct(bool& more) {
    if (m_nextCopyRow >= m_copyRows.size()) {
        m_nextCopyRow = 0;
        more = false;
        return nullptr;
    }
    FrequencyListCopyStruct* row = &m_copyRows[m_nextCopyRow++];
    more = m_nextCopyRow < m_copyRows.size();
    return row;
}

void FreqStore::ClearFrequencyListCopyStruct() {
    m_copyRows.clear();
    m_nextCopyRow = 0;
}

QClipboard* FreqStore::GetClipboard() const {
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) ? QGuiApplication::clipboard()
                                                                        : nullptr;
}

void FreqStore::SetClipboardText(const QString& text) {
    if (QClipboard* clipboard = GetClipboard())
        clipboard->setText(text);
    else
        m_textWithoutClipboard = text;
}

QString FreqStore::GetClipboardText() const {
    const QClipboard* clipboard = GetClipboard();
    return clipboard ? clipboard->text() : m_textWithoutClipboard;
}

void FreqStore::Tune(IFrequencyStoreItem& item, QWidget* view, bool allSettings) const {
    if (m_tuner)
        m_tuner(item, view, allSettings);
}
