#pragma once

#include <QString>

#include <functional>
#include <vector>

class QWidget;

/// A list whose content ends with the program unless it is saved.
struct WorkList {
    int listId;                      ///< in the store
    std::function<bool()> isUnsaved; ///< whether it holds what is in no file
    std::function<qint64()> count;   ///< entries of the list
    std::function<QString()> file;   ///< the path of its file; empty when it was never saved
    /// Saves it into its file, or asks for one where there is none; the path, empty when it was not saved.
    std::function<QString()> save;
};

/// The lists that are asked about before the program ends: all by one rule, in one question.
class UnsavedWork {
public:
    /// The question belongs to `window`.
    explicit UnsavedWork(QWidget* window) : m_window(window) {}

    void Add(WorkList list) { m_lists.push_back(std::move(list)); }
    /// Saves a list; the path, empty when it was not saved or is none of these.
    QString Save(int listId) const;
    /// Names the lists that would be lost, asks, and saves those that the operator wants saved. `kept` says
    /// what is kept unasked. False when the operator stays, or when a list is not saved that was to be.
    bool MayLeave(const QString& kept) const;

private:
    QWidget* m_window;
    std::vector<WorkList> m_lists;
};
