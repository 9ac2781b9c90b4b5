#include "workstation/frequencybaraccess.h"

#include "workstation/frequencybar.h"

#include <QAccessibleWidget>

namespace {

/// A line of the bar: which list it is of, and what it marks. It ends with the bar's interface.
class LineInterface final : public QAccessibleInterface {
public:
    LineInterface(FrequencyBar& bar, int listId) : m_bar(bar), m_listId(listId) {}

    bool isValid() const override { return m_bar.IsLineShown(m_listId); }
    QObject* object() const override { return nullptr; } // it has none of its own
    QAccessibleInterface* parent() const override { return QAccessible::queryAccessibleInterface(&m_bar); }
    QAccessibleInterface* child(int) const override { return nullptr; }
    QAccessibleInterface* childAt(int, int) const override { return nullptr; }
    int childCount() const override { return 0; }
    int indexOfChild(const QAccessibleInterface*) const override { return -1; }
    QRect rect() const override {
        const QRect place = m_bar.LineRect(m_listId);
        return {m_bar.mapToGlobal(place.topLeft()), place.size()};
    }
    QAccessible::Role role() const override { return QAccessible::ListItem; }
    QAccessible::State state() const override {
        QAccessible::State state;
        state.readOnly = true;
        return state;
    }
    QString text(QAccessible::Text kind) const override {
        switch (kind) {
        case QAccessible::Name:
            return m_bar.LineName(m_listId);
        case QAccessible::Value:
        case QAccessible::Description:
            return m_bar.LineSummary(m_listId);
        default:
            return QString();
        }
    }
    void setText(QAccessible::Text, const QString&) override {}

private:
    FrequencyBar& m_bar;
    int m_listId;
};

/// The bar as a control whose value is the tuned frequency (Hz), between the ends of the range shown.
class BarInterface final : public QAccessibleWidget, public QAccessibleValueInterface {
public:
    explicit BarInterface(FrequencyBar& bar) : QAccessibleWidget(&bar, QAccessible::Slider), m_bar(bar) {}
    ~BarInterface() override {
        for (const QAccessible::Id line : m_lines)
            QAccessible::deleteAccessibleInterface(line);
    }

    /// The lines that are shown, from the top.
    int childCount() const override { return static_cast<int>(m_bar.ShownLists().size()); }
    QAccessibleInterface* child(int index) const override {
        const std::vector<int> ids = m_bar.ShownLists();
        if (index < 0 || index >= static_cast<int>(ids.size()))
            return nullptr;
        const int listId = ids[static_cast<size_t>(index)];
        auto line = m_lines.constFind(listId);
        if (line == m_lines.constEnd())
            line = m_lines.insert(listId,
                                  QAccessible::registerAccessibleInterface(new LineInterface(m_bar, listId)));
        return QAccessible::accessibleInterface(*line);
    }
    int indexOfChild(const QAccessibleInterface* wanted) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index) == wanted)
                return index;
        }
        return -1;
    }
    QAccessibleInterface* childAt(int x, int y) const override {
        for (int index = 0; index < childCount(); ++index) {
            if (child(index)->rect().contains(x, y))
                return child(index);
        }
        return nullptr;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        return type == QAccessible::ValueInterface ? static_cast<QAccessibleValueInterface*>(this)
                                                   : QAccessibleWidget::interface_cast(type);
    }
    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Description || kind == QAccessible::Value ? m_bar.Summary()
                                                                              : QAccessibleWidget::text(kind);
    }
    QVariant currentValue() const override { return m_bar.GetTuned(); }
    /// Tunes, as a click does.
    void setCurrentValue(const QVariant& hertz) override { emit m_bar.Clicked(hertz.toDouble(), 0); }
    QVariant maximumValue() const override { return m_bar.To(); }
    QVariant minimumValue() const override { return m_bar.From(); }
    QVariant minimumStepSize() const override { return m_bar.GetStep(); }

private:
    FrequencyBar& m_bar;
    mutable QHash<int, QAccessible::Id> m_lines; ///< by list; made when they are asked for
};

QAccessibleInterface* make(const QString&, QObject* object) {
    auto* bar = qobject_cast<FrequencyBar*>(object);
    return bar ? new BarInterface(*bar) : nullptr;
}

} // namespace

void FrequencyBarAccess::Install() {
    static const bool isInstalled = [] {
        QAccessible::installFactory(make);
        return true;
    }();
    Q_UNUSED(isInstalled)
}
