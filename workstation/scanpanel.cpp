#include "workstation/scanpanel.h"

#include "host/base/frequencytext.h"
#include "host/gui/colorset.h"
#include "host/widgets/vccomboboxclassic.h"
#include "host/widgets/vclineedit.h"
#include "scan/scan.h"
#include "workstation/elidedlabel.h"
#include "workstation/scanactions.h"

#include <QAbstractItemView>
#include <QAction>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

#include <climits>

namespace {

constexpr int RefreshMilliseconds = 100;
constexpr int ShortestChoice = 12; ///< letters that a narrow panel shows of a choice

VCLineEdit::LineEditType fieldType(ScanValue::Type type) {
    switch (type) {
    case ScanValue::Type::Frequency:
        return VCLineEdit::Frequency;
    case ScanValue::Type::Bandwidth:
        return VCLineEdit::Bandwidth;
    case ScanValue::Type::Real:
        return VCLineEdit::Real;
    default:
        return VCLineEdit::Integer;
    }
}

/// An idle scan with a reason has ended by an error.
IColorBase::ECOLOR colorOf(ScanState state, bool hasReason) {
    if (state == ScanState::Waiting || (state == ScanState::Idle && hasReason))
        return IColorBase::ERROR_TEXT;
    if (state == ScanState::OnSignal)
        return IColorBase::GOOD_TEXT;
    return state == ScanState::Held ? IColorBase::WARNING_TEXT : IColorBase::MUTED_TEXT;
}

void paintIn(QLabel& label, IColorBase::ECOLOR color) {
    QPalette colors = label.palette();
    const QColor wanted = ColorSet::Instance().GetColorDefinition(color).GetColor();
    if (colors.color(QPalette::WindowText) == wanted)
        return;
    colors.setColor(QPalette::WindowText, wanted);
    label.setPalette(colors);
}

} // namespace

ScanPanel::ScanPanel(Scan& scan, const ScanActions& actions, QWidget* parent)
    : QWidget(parent),
      m_scan(scan),
      m_state(new QLabel(this)),
      m_current(new ElidedLabel(this)),
      m_reason(new QLabel(this)),
      m_counts(new QLabel(this)),
      m_form(new QFormLayout(this)) {
    m_form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    m_form->setRowWrapPolicy(QFormLayout::WrapLongRows);
    QFont bold = m_state->font();
    bold.setBold(true);
    m_state->setFont(bold);
    m_state->setObjectName(QStringLiteral("ScanState"));
    m_current->setObjectName(QStringLiteral("ScanCurrent"));
    m_current->setTextFormat(Qt::PlainText);
    m_reason->setObjectName(QStringLiteral("ScanReason"));
    m_reason->setTextFormat(Qt::PlainText);
    m_counts->setObjectName(QStringLiteral("ScanCounts"));
    auto* head = new QHBoxLayout;
    head->addWidget(m_state);
    head->addWidget(m_current, 1);
    m_form->addRow(head);
    m_form->addRow(m_reason);
    m_form->addRow(makeButtons(actions));
    m_form->addRow(m_counts);
    for (QLabel* label : {m_reason, m_counts})
        label->setWordWrap(true);
    for (const ScanValue& setting : ScanSettingValues())
        addSetting(setting);
    m_refresh.setSingleShot(true);
    m_refresh.setInterval(RefreshMilliseconds);
    connect(&m_refresh, &QTimer::timeout, this, &ScanPanel::Refresh);
    connect(&scan, &Scan::Changed, this, [this] {
        if (isVisible() && !m_refresh.isActive())
            m_refresh.start();
    });
    Refresh();
}

QWidget* ScanPanel::makeButtons(const ScanActions& actions) {
    auto* row = new QWidget(this);
    auto* layout = new QGridLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    for (const auto command :
         {ScanActions::Start, ScanActions::Hold, ScanActions::Skip, ScanActions::LockOut}) {
        auto* button = new QToolButton(row);
        button->setDefaultAction(actions.Get(command));
        button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
        button->setFocusPolicy(Qt::TabFocus);
        // In the dark a button that is down looks much as the others do.
        connect(button, &QToolButton::toggled, button, [button](bool isOn) {
            QFont font = button->font();
            font.setBold(isOn);
            button->setFont(font);
        });
        button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
        layout->addWidget(button, layout->count() / 2, layout->count() % 2);
    }
    return row;
}

void ScanPanel::addSetting(const ScanValue& setting) {
    const QString unit = QString::fromUtf8(setting.unit);
    const QString title = Scan::tr(setting.title);
    const QByteArray name = setting.key.Text().toLatin1();
    QWidget* editor = nullptr;
    if (setting.type == ScanValue::Type::Choice) {
        auto* box = new VCComboBoxClassic(this, name);
        auto& choice = m_scan.GetValues().Get<ValueSelection>(setting.key);
        box->SetValueSelection(&choice);
        box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
        box->setMinimumContentsLength(ShortestChoice);
        box->view()->setAccessibleName(title);
        connect(box, &QComboBox::currentIndexChanged, this, &ScanPanel::showWhatApplies);
        editor = box;
    } else {
        auto* field = new VCLineEdit(this, name, fieldType(setting.type));
        field->SetValueBase(m_scan.GetValues().Find(setting.key));
        editor = field;
    }
    editor->setAccessibleName(title);
    m_form->addRow(unit.isEmpty() ? title : tr("%1 (%2)").arg(title, unit), editor);
}

void ScanPanel::showWhatApplies() {
    const ScanSource source = m_scan.GetValues().GetSource();
    const ScanSettings settings = m_scan.GetValues().GetSettings();
    const std::pair<Names::Id, bool> rows[] = {
        {ScanKeys::From, source == ScanSource::Range},
        {ScanKeys::To, source == ScanSource::Range},
        {ScanKeys::Step, source != ScanSource::MemoryChannels},
        {ScanKeys::ScanThreshold, settings.stopAt == ScanSettings::StopAt::Threshold},
        {ScanKeys::GoOnSeconds, settings.goOn != ScanSettings::GoOn::ByHand},
    };
    for (const auto& [key, applies] : rows) {
        if (auto* editor = findChild<QWidget*>(Names::Text(key)))
            m_form->setRowVisible(editor, applies);
    }
}

QString ScanPanel::currentText() const {
    const Scanner& scanner = m_scan.GetScanner();
    if (!scanner.IsRunning())
        return QString();
    const ScanStep& step = scanner.GetStep();
    QStringList parts{Quor::FrequencyText(step.frequency)};
    if (scanner.IsAtPriority())
        parts << tr("priority");
    if (step.channel > 0)
        parts << tr("channel %1").arg(step.channel);
    if (!step.comment.isEmpty())
        parts << step.comment;
    return parts.join(QStringLiteral(", "));
}

QString ScanPanel::countsText() const {
    const ScanCounts& counts = m_scan.GetScanner().GetCounts();
    const auto number = [](quint64 count) { return static_cast<int>(std::min<quint64>(count, INT_MAX)); };
    QStringList parts{tr("%Ln step(s)", nullptr, number(counts.steps)),
                      tr("%Ln pass(es)", nullptr, number(counts.passes)),
                      tr("%Ln signal(s)", nullptr, number(counts.stops))};
    if (counts.unreachable > 0)
        parts << tr("%Ln out of reach", nullptr, number(counts.unreachable));
    if (const quint64 locked = m_scan.GetValues().Get<ValueList<double>>(ScanKeys::LockedOut).Size();
        locked > 0)
        parts << tr("%Ln locked out", nullptr, number(locked));
    return parts.join(QStringLiteral(", "));
}

void ScanPanel::Refresh() {
    const ScanValues& values = m_scan.GetValues();
    const QString& reason = values.Get<Value<QString>>(ScanKeys::Reason).GetValue();
    m_state->setText(values.Get<Value<QString>>(ScanKeys::State).GetValue());
    paintIn(*m_state, colorOf(m_scan.GetScanner().GetState(), !reason.isEmpty()));
    m_current->setText(currentText());
    m_current->setToolTip(m_current->text());
    m_reason->setText(reason);
    m_reason->setVisible(!reason.isEmpty());
    m_counts->setText(countsText());
    showWhatApplies();
}

void ScanPanel::showEvent(QShowEvent* event) {
    Refresh();
    QWidget::showEvent(event);
}
