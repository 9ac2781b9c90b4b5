#pragma once

#include <cstddef>
#include <functional>

/// A part of a step beside entries of lists and texts that follow them. It is made while the action runs and
/// swaps what there is against what it keeps, back and forth.
class UndoPart {
public:
    virtual ~UndoPart() = default;

    /// Identifier of the list in the store that is changed; 0 for a part that goes along with others and
    /// makes no step of its own.
    virtual int GetListId() const { return 0; }
    virtual size_t EntryCount() const { return 0; }
    /// Whether what the part is about is as it left it.
    virtual bool CanSwap() const { return true; }
    /// Throws RGException, with nothing changed, when what is kept cannot be read.
    virtual void Swap() = 0;
    /// All parts and lists of the step have been swapped.
    virtual void Settle() {}
    /// Bytes that the part keeps in memory, and `Spill` moves as many as it can into a temporary file.
    virtual size_t InMemory() const { return 0; }
    virtual void Spill() {}
};

/// A state that goes along with a list, such as the name of the file that it shows. The function swaps the
/// present state against the one that it keeps.
class UndoState final : public UndoPart {
public:
    explicit UndoState(std::function<void()> swap) : m_swap(std::move(swap)) {}
    void Swap() override { m_swap(); }

private:
    std::function<void()> m_swap;
};
