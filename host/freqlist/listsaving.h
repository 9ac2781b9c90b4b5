#pragma once

#include <utility>

class MultiViewMediatorCtrl;

/// Says which list is being saved. What is written meanwhile is the file of that list, which holds it from
/// then on: whoever keeps what is in no file lets go of the list with that file. An export, or a copy, is
/// none. GUI thread only.
///
/// \code
/// const bool isSaved = ListSaving::Do(listId, [&] { return controller.SaveFrequencies(path); });
/// \endcode
class ListSaving {
public:
    ListSaving(const ListSaving&) = delete;
    ListSaving& operator=(const ListSaving&) = delete;

    /// Does `write` for the list with an identifier in the store, and answers as that does.
    template <typename Write>
    static auto Do(int listId, Write write) {
        const ListSaving saving(listId);
        return write();
    }
    /// The same for the list that is registered with a controller; without one it is no list's file.
    template <typename Write>
    static auto Do(const MultiViewMediatorCtrl* list, Write write) {
        return Do(idOf(list), std::move(write));
    }

    /// The list that is being saved; 0 for none.
    static int Current();

private:
    explicit ListSaving(int listId);
    ~ListSaving();
    static int idOf(const MultiViewMediatorCtrl* list);

    int m_before;
};
