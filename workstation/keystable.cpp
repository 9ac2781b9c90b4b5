#include "workstation/keystable.h"

#include "host/gui/colorset.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeySequenceEdit>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

namespace {

enum Column { CommandColumn, KeyColumn };

QPushButton* addButton(QHBoxLayout& row, const QString& text, const QString& tip) {
    auto* button = new QPushButton(text);
    button->setToolTip(tip);
    button->setAutoDefault(false);
    row.addWidget(button);
    return button;
}

} // namespace

KeysTable::KeysTable(KeySettings& settings, QWidget* parent)
    : QWidget(parent),
      m_settings(settings),
      m_table(new QTreeWidget(this)),
      m_edit(new QKeySequenceEdit(this)),
      m_conflict(new QLabel(this)) {
    auto* layout = new QVBoxLayout(this);
    m_table->setObjectName(QStringLiteral("Keys"));
    m_table->setRootIsDecorated(false);
    m_table->setHeaderLabels({tr("Command"), tr("Keys")});
    m_table->setAccessibleName(tr("Keys"));
    layout->addWidget(m_table, 1);
    auto* row = new QHBoxLayout;
    auto* label = new QLabel(tr("Ne&w key:"), this);
    label->setBuddy(m_edit);
    row->addWidget(label);
    row->addWidget(m_edit, 1);
    m_set = addButton(*row, tr("Se&t"), tr("Give the command this key"));
    m_none = addButton(*row, tr("&None"), tr("Take the keys of the command away"));
    m_reset = addButton(*row, tr("&Default"), tr("Give the command its usual keys again"));
    layout->addLayout(row);
    auto* below = new QHBoxLayout;
    m_conflict->setObjectName(QStringLiteral("KeyConflict"));
    m_conflict->setWordWrap(true);
    below->addWidget(m_conflict, 1);
    auto* all = addButton(*below, tr("&Reset All"), tr("Give all commands their usual keys again"));
    layout->addLayout(below);

    for (const KeySettings::Command& command : settings.Commands()) {
        auto* item = new QTreeWidgetItem(
            m_table, {QStringLiteral("%1 > %2").arg(command.menu, KeySettings::TextOf(*command.action))});
        item->setIcon(CommandColumn, command.action->icon());
        m_keys.emplace_back();
        setKeys(m_keys.size() - 1, command.action->shortcuts());
    }
    m_table->header()->setSectionResizeMode(CommandColumn, QHeaderView::Stretch);
    m_table->header()->setStretchLastSection(false);
    m_table->header()->setSectionResizeMode(KeyColumn, QHeaderView::ResizeToContents);
    connect(m_table, &QTreeWidget::currentItemChanged, this, [this] {
        m_edit->clear();
        showCurrent();
    });
    connect(m_edit, &QKeySequenceEdit::keySequenceChanged, this, &KeysTable::showCurrent);
    connect(m_set, &QPushButton::clicked, this, &KeysTable::takeKey);
    connect(m_none, &QPushButton::clicked, this, [this] { setKeys(static_cast<size_t>(current()), {}); });
    connect(m_reset, &QPushButton::clicked, this, [this] {
        const auto command = static_cast<size_t>(current());
        setKeys(command, m_settings.Commands()[command].defaults);
    });
    connect(all, &QPushButton::clicked, this, &KeysTable::resetAll);
    m_table->setCurrentItem(m_table->topLevelItem(0));
    showCurrent();
}

int KeysTable::current() const {
    return m_table->indexOfTopLevelItem(m_table->currentItem());
}

void KeysTable::setKeys(size_t command, const KeySettings::Keys& keys) {
    m_keys[command] = keys;
    m_table->topLevelItem(static_cast<int>(command))
        ->setText(KeyColumn, QKeySequence::listToString(keys, QKeySequence::NativeText));
    showCurrent();
}

/// What is typed can be set unless another command has it.
void KeysTable::showCurrent() {
    const int command = current();
    const QKeySequence key = m_edit->keySequence();
    const QString owner = command < 0 || key.isEmpty()
                              ? QString()
                              : m_settings.OwnerOf(key, static_cast<size_t>(command), m_keys);
    QPalette colors = palette();
    colors.setColor(QPalette::WindowText,
                    ColorSet::Instance().GetColorDefinition(IColorBase::ERROR_TEXT).GetColor());
    m_conflict->setPalette(colors);
    m_conflict->setText(owner.isEmpty() ? QString()
                                        : tr("%1 belongs to %2; take it from there first.")
                                              .arg(key.toString(QKeySequence::NativeText), owner));
    m_set->setEnabled(command >= 0 && !key.isEmpty() && owner.isEmpty());
    m_none->setEnabled(command >= 0 && !m_keys[static_cast<size_t>(command)].isEmpty());
    m_reset->setEnabled(command >= 0);
}

void KeysTable::takeKey() {
    setKeys(static_cast<size_t>(current()), {m_edit->keySequence()});
    m_edit->clear();
}

void KeysTable::resetAll() {
    for (size_t i = 0; i < m_keys.size(); ++i)
        setKeys(i, m_settings.Commands()[i].defaults);
}

void KeysTable::Apply() {
    for (size_t i = 0; i < m_keys.size(); ++i)
        m_settings.Set(m_settings.Commands()[i], m_keys[i]);
}
