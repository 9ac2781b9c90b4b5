#include "workstation/sharerefusal.h"

#include "host/freqlist/freqstore.h"
#include "workstation/detailspanel.h"
#include "workstation/sharing.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr QSize UsualSize(620, 300);
/// More are counted, not shown.
constexpr size_t MostShown = 200;
/// Characters of two texts that are alike before they differ.
constexpr qsizetype LongestAlike = 20;
constexpr qsizetype ShownAlike = 10;
const QString FrequencyName = QStringLiteral("frequency");

QString titleOf(const ListClient::Refusal& refusal) {
    for (const ListClient::Refusal::Field& field : refusal.fields) {
        if (field.name == FrequencyName)
            return DetailsPanel::TextOf(field.name, field.wanted);
    }
    const Node* const entry = refusal.entry.get();
    const ValueBase* const frequency = entry ? entry->FindOwnValue(Names::Intern(FrequencyName)) : nullptr;
    return frequency ? DetailsPanel::TextOf(FrequencyName, frequency->GetStringValue()) : QString();
}

/// Long texts often differ at their ends only, for which there is no room: they begin shortly before that.
void addField(QTreeWidgetItem& entry, const ListClient::Refusal::Field& field) {
    const QString mine = DetailsPanel::TextOf(field.name, field.wanted);
    const QString theirs = DetailsPanel::TextOf(field.name, field.present);
    const auto differs = std::ranges::mismatch(mine, theirs).in1 - mine.begin();
    const auto fromThere = [&](const QString& text) {
        return differs > LongestAlike ? QChar(0x2026) + text.mid(differs - ShownAlike) : text;
    };
    auto* row =
        new QTreeWidgetItem(&entry, {DetailsPanel::TitleOf(field.name), fromThere(mine), fromThere(theirs)});
    row->setToolTip(1, mine);
    row->setToolTip(2, theirs);
}

} // namespace

ShareRefusal::ShareRefusal(Sharing& sharing, QWidget* parent)
    : QDialog(parent),
      m_sharing(sharing),
      m_reason(new QLabel(this)),
      m_fields(new QTreeWidget(this)),
      m_again(new QPushButton(tr("&Try Again with Mine"), this)) {
    setWindowTitle(tr("Not Accepted"));
    setAttribute(Qt::WA_DeleteOnClose);
    m_reason->setTextFormat(Qt::PlainText);
    m_reason->setWordWrap(true);
    m_fields->setAccessibleName(tr("What differs"));
    m_fields->setHeaderLabels({tr("Entry"), tr("Mine"), tr("Theirs")});
    m_fields->setWordWrap(true); // long texts often differ at their ends only
    m_fields->header()->setSectionResizeMode(QHeaderView::Stretch);
    m_fields->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_again->setObjectName(QStringLiteral("TryAgain"));
    m_again->setAutoDefault(false);
    auto* buttons = new QDialogButtonBox(this);
    auto* keep = new QPushButton(tr("&Keep Theirs"), this);
    keep->setObjectName(QStringLiteral("KeepTheirs"));
    keep->setDefault(true);
    buttons->addButton(m_again, QDialogButtonBox::ActionRole);
    buttons->addButton(keep, QDialogButtonBox::RejectRole);
    connect(m_again, &QPushButton::clicked, this, &ShareRefusal::tryAgain);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_reason);
    layout->addWidget(m_fields, 1);
    layout->addWidget(buttons);
    resize(UsualSize);
}

void ShareRefusal::Add(int listId, const ListClient::Refusal& refusal) {
    m_refused.push_back({listId, refusal});
    if (m_refused.size() <= MostShown) {
        const bool isRemoval = refusal.fields.empty();
        auto* entry = new QTreeWidgetItem(m_fields, {titleOf(refusal), isRemoval ? tr("removed") : QString(),
                                                     isRemoval ? tr("there") : QString()});
        for (const ListClient::Refusal::Field& field : refusal.fields)
            addField(*entry, field);
        entry->setExpanded(true);
    }
    Refresh();
}

void ShareRefusal::Refresh() {
    if (m_refused.empty())
        return;
    const Refused& last = m_refused.back();
    const IFrequencyListDefinition* const list = FreqStore::Instance().GetDefinition(last.listId);
    m_reason->setText(tr("%1: %n change(s) not accepted: %2. The list shows what the site has.", "",
                         static_cast<int>(m_refused.size()))
                          .arg(list ? list->GetName() : QString(), last.refusal.reason));
    const QString whyNot = m_sharing.WhyNoEditing(last.listId);
    m_again->setEnabled(whyNot.isEmpty());
    m_again->setToolTip(
        whyNot.isEmpty() ? tr("Change the entries to what they were to be, whatever they are now") : whyNot);
}

void ShareRefusal::tryAgain() {
    const std::vector<Refused> refused = std::exchange(m_refused, {});
    close();
    for (const Refused& one : refused)
        m_sharing.TryAgain(one.listId, one.refusal);
}
