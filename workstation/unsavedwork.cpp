#include "workstation/unsavedwork.h"

#include "host/freqlist/freqstore.h"
#include "workstation/unsaveddialog.h"

#include <QPointer>

#include <algorithm>

namespace {

UnsavedDialog::Row rowOf(const WorkList& list) {
    const IFrequencyListDefinition* const definition = FreqStore::Instance().GetDefinition(list.listId);
    return {definition ? definition->GetName() : QString(), list.count(), list.file()};
}

} // namespace

QString UnsavedWork::Save(int listId) const {
    const auto found = std::find_if(m_lists.begin(), m_lists.end(),
                                    [listId](const WorkList& list) { return list.listId == listId; });
    return found == m_lists.end() ? QString() : found->save();
}

bool UnsavedWork::MayLeave(const QString& kept) const {
    std::vector<const WorkList*> unsaved;
    std::vector<UnsavedDialog::Row> rows;
    for (const WorkList& list : m_lists) {
        if (!list.isUnsaved())
            continue;
        unsaved.push_back(&list);
        rows.push_back(rowOf(list));
    }
    if (unsaved.empty())
        return true;
    const QPointer<UnsavedDialog> dialog(new UnsavedDialog(rows, kept, m_window));
    const int answer = dialog->exec();
    const std::vector<size_t> wanted = dialog ? dialog->Checked() : std::vector<size_t>();
    delete dialog;
    if (answer != UnsavedDialog::Save)
        return answer == UnsavedDialog::Discard;
    return std::all_of(wanted.begin(), wanted.end(),
                       [&unsaved](size_t row) { return !unsaved[row]->save().isEmpty(); });
}
