#pragma once

#include <QString>

/// The scope of what the operator does to lists: what changes while it lives is one step that can be undone.
/// An action within another one is part of it. An action that is begun in a nested event loop, such as that
/// of a dialog, is a step of its own, and what else changes in such a loop belongs to nobody's.
///
/// \code
/// {
///     const OperatorAction action(QStringLiteral("Delete")); // as the Edit menu names it
///     list->DeleteNode(list->LastChild());
/// }
/// \endcode
class OperatorAction {
public:
    explicit OperatorAction(const QString& name);
    OperatorAction(const OperatorAction&) = delete;
    OperatorAction& operator=(const OperatorAction&) = delete;
    ~OperatorAction();

    /// Who makes steps of actions. `Begin` answers with what `End` is told.
    class Listener {
    public:
        virtual ~Listener() = default;
        virtual int Begin(const QString& name) = 0;
        virtual void End(int action) = 0;
    };
    /// The listener is not owned; null for none.
    static void SetListener(Listener* listener);

private:
    int m_action = 0;
};
