#pragma once

#include <QPixmap>
#include <QString>

#include <functional>

class FrequencyStoreListView;
class MultiViewMediatorCtrl;
class PixStateVector;
class QWidget;

// What a `ListRegistration` has as its functions, for lists that are told by position.
using PixStateFactory = PixStateVector* (*)();
using ViewFactory = FrequencyStoreListView* (*)(QWidget* parent, unsigned listId);
using RecycleFunction = void (*)(const QString& text);

/// The description of a list that is registered in the store. The store keeps the functions as long as the
/// list is registered; each may be empty.
///
/// \code
/// ListRegistration registration;
/// registration.name = QStringLiteral("Bookmarks");
/// registration.controller = &controller; // a FrequencyNodeMediatorCtrl of the plug-in
/// registration.viewFactory = [](QWidget* parent, unsigned id) { return new BookmarkView(parent, id); };
/// \endcode
struct ListRegistration {
    QString name{}; ///< of its tab
    QPixmap icon{}; ///< 16 by 16 pixels
    /// Makes the list's line of the frequency bar; the caller owns it. A list without one has no line.
    std::function<PixStateVector*()> pixStateFactory{};
    bool available4WideView = true;   ///< offered in the wide window
    bool available4SimpleView = true; ///< offered in the simple window
    /// Not owned; null for lists that are shown without mediators.
    MultiViewMediatorCtrl* controller = nullptr;
    /// Makes a view of the list, which has that identifier; the parent owns it.
    std::function<FrequencyStoreListView*(QWidget* parent, unsigned listId)> viewFactory{};
    /// Takes back an entry, given as text, that was deleted before.
    std::function<void(const QString& text)> recycle{};
    int capabilityId = 0; ///< what an operator needs for the list; 0: nothing
};

/// One list as the store keeps it.
class IFrequencyListDefinition {
public:
    virtual ~IFrequencyListDefinition() = default;

    virtual QString GetName() const = 0;
    virtual QPixmap GetPixmap() const = 0;
    virtual unsigned long GetSubgroup() const = 0;
    /// Null for lists that are shown without mediators.
    virtual MultiViewMediatorCtrl* GetFrequencyNodeMediatorCtrl() const = 0;
    virtual void SetFrequencyNodeMediatorCtrl(MultiViewMediatorCtrl* controller) = 0;
    virtual bool GetAvailable4WideView() const = 0;
    virtual bool GetAvailable4SimpleView() const = 0;
    virtual int GetCapabilityId4View() const = 0;
    /// A new view of the list, or null when it has none.
    [[nodiscard]] virtual FrequencyStoreListView* CreateView(QWidget* parent, unsigned listId) = 0;
    /// A new frequency-bar line of the list, or null when it has none.
    [[nodiscard]] virtual PixStateVector* CreatePixStateVector() = 0;
    virtual bool Available4FrequencyBar() const = 0;
    virtual void RestoreFromRecycle(const QString& text) = 0;
    /// Path of the tree value or node that holds the list; empty where there is none.
    virtual QString GetValuePath() const { return QString(); }
    /// Passes the value path to a widget that shows it; false when the list has none or is off.
    virtual bool PassValuePath(QWidget*) const { return false; }
};

/// A list definition built from a name, an icon and factories. It owns nothing that it is given.
class FrequencyListDefinition : public IFrequencyListDefinition {
public:
    explicit FrequencyListDefinition(ListRegistration registration)
        : m_registration(std::move(registration)) {}
    FrequencyListDefinition(const QString& name, const QPixmap& pixmap, PixStateFactory pixStateFactory,
                            bool available4WideView, bool available4SimpleView,
                            MultiViewMediatorCtrl* controller, ViewFactory viewFactory,
                            RecycleFunction recycle, int capabilityId)
        : FrequencyListDefinition(ListRegistration{name, pixmap, pixStateFactory, available4WideView,
                                                   available4SimpleView, controller, viewFactory, recycle,
                                                   capabilityId}) {}

    QString GetName() const override { return m_registration.name; }
    void SetName(const QString& name) { m_registration.name = name; }
    QPixmap GetPixmap() const override { return m_registration.icon; }
    void SetPixmap(const QPixmap& pixmap) { m_registration.icon = pixmap; }
    unsigned long GetSubgroup() const override { return m_subgroup; }
    void SetSubgroup(unsigned long subgroup) { m_subgroup = subgroup; }
    MultiViewMediatorCtrl* GetFrequencyNodeMediatorCtrl() const override { return m_registration.controller; }
    void SetFrequencyNodeMediatorCtrl(MultiViewMediatorCtrl* controller) override {
        m_registration.controller = controller;
    }
    bool GetAvailable4WideView() const override { return m_registration.available4WideView; }
    void SetAvailable4WideView(bool available) { m_registration.available4WideView = available; }
    bool GetAvailable4SimpleView() const override { return m_registration.available4SimpleView; }
    void SetAvailable4SimpleView(bool available) { m_registration.available4SimpleView = available; }
    int GetCapabilityId4View() const override { return m_registration.capabilityId; }
    [[nodiscard]] FrequencyStoreListView* CreateView(QWidget* parent, unsigned listId) override {
        return m_registration.viewFactory ? m_registration.viewFactory(parent, listId) : nullptr;
    }
    [[nodiscard]] PixStateVector* CreatePixStateVector() override {
        return m_registration.pixStateFactory ? m_registration.pixStateFactory() : nullptr;
    }
    bool Available4FrequencyBar() const override { return m_registration.pixStateFactory != nullptr; }
    void RestoreFromRecycle(const QString& text) override {
        if (m_registration.recycle)
            m_registration.recycle(text);
    }

private:
    ListRegistration m_registration;
    unsigned long m_subgroup = 0;
};
