#pragma once

#include <QPixmap>
#include <QString>

class FrequencyStoreListView;
class MultiViewMediatorCtrl;
class PixStateVector;
class QWidget;

/// Makes the frequency-bar line of a list; the caller owns it.
using PixStateFactory = PixStateVector* (*)();
/// Makes a view of the list with that identifier; its parent owns it.
using ViewFactory = FrequencyStoreListView* (*)(QWidget* parent, unsigned listId);
/// Takes back an entry, given as text, that was deleted before.
using RecycleFunction = void (*)(const QString& text);

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
    virtual FrequencyStoreListView* CreateView(QWidget* parent, unsigned listId) = 0;
    /// A new frequency-bar line of the list, or null when it has none.
    virtual PixStateVector* CreatePixStateVector() = 0;
    virtual bool Available4FrequencyBar() const = 0;
    virtual void RestoreFromRecycle(const QString& text) = 0;
    /// Path of the tree value or node that holds the list; empty where there is none.
    virtual QString GetValuePath() const { return QString(); }
    /// Hands the value path to a widget that shows it; false when the list has none or is not enabled.
    virtual bool PassValuePath(QWidget*) const { return false; }
};

/// A list definition built from a name, an icon and factories. It owns nothing that it is given.
class FrequencyListDefinition : public IFrequencyListDefinition {
public:
    FrequencyListDefinition(const QString& name, const QPixmap& pixmap, PixStateFactory pixStateFactory,
                            bool available4WideView, bool available4SimpleView,
                            MultiViewMediatorCtrl* controller, ViewFactory viewFactory,
                            RecycleFunction recycle, int capabilityId)
        : m_name(name),
          m_pixmap(pixmap),
          m_pixStateFactory(pixStateFactory),
          m_wide(available4WideView),
          m_simple(available4SimpleView),
          m_controller(controller),
          m_viewFactory(viewFactory),
          m_recycle(recycle),
          m_capabilityId(capabilityId) {}

    QString GetName() const override { return m_name; }
    void SetName(const QString& name) { m_name = name; }
    QPixmap GetPixmap() const override { return m_pixmap; }
    void SetPixmap(const QPixmap& pixmap) { m_pixmap = pixmap; }
    unsigned long GetSubgroup() const override { return m_subgroup; }
    void SetSubgroup(unsigned long subgroup) { m_subgroup = subgroup; }
    MultiViewMediatorCtrl* GetFrequencyNodeMediatorCtrl() const override { return m_controller; }
    void SetFrequencyNodeMediatorCtrl(MultiViewMediatorCtrl* controller) override {
        m_controller = controller;
    }
    bool GetAvailable4WideView() const override { return m_wide; }
    void SetAvailable4WideView(bool available) { m_wide = available; }
    bool GetAvailable4SimpleView() const override { return m_simple; }
    void SetAvailable4SimpleView(bool available) { m_simple = available; }
    int GetCapabilityId4View() const override { return m_capabilityId; }
    FrequencyStoreListView* CreateView(QWidget* parent, unsigned listId) override {
        return m_viewFactory ? m_viewFactory(parent, listId) : nullptr;
    }
    PixStateVector* CreatePixStateVector() override {
        return m_pixStateFactory ? m_pixStateFactory() : nullptr;
    }
    bool Available4FrequencyBar() const override { return m_pixStateFactory != nullptr; }
    void RestoreFromRecycle(const QString& text) override {
        if (m_recycle)
            m_recycle(text);
    }

private:
    QString m_name;
    QPixmap m_pixmap;
    PixStateFactory m_pixStateFactory;
    bool m_wide;
    bool m_simple;
    unsigned long m_subgroup = 0;
    MultiViewMediatorCtrl* m_controller;
    ViewFactory m_viewFactory;
    RecycleFunction m_recycle;
    int m_capabilityId;
};
