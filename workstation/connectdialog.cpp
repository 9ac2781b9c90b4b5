#include "workstation/connectdialog.h"

#include "host/base/frequencytext.h"
#include "receiver/hamlibreceiver.h"
#include "workstation/helpwindow.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QShortcut>
#include <QSpinBox>

#include <algorithm>

namespace {

constexpr int NoModel = 0; ///< stands for the simulated receiver
constexpr int Speeds[] = {1200, 2400, 4800, 9600, 19200, 38400, 57600, 115200};
constexpr QSize UsualSize(560, 620);
constexpr QSize Frame(20, 60); ///< what a window has around it, and some room
const QStringList NetworkPorts{QStringLiteral("localhost:4532"), QStringLiteral("localhost:7356")};

/// Serial lines of this machine; those by id stay the same whatever is plugged in first.
QStringList serialPorts() {
    QStringList paths;
    const QDir byId(QStringLiteral("/dev/serial/by-id"));
    for (const QString& name : byId.entryList(QDir::System | QDir::Files))
        paths << byId.filePath(name);
    const QDir devices(QStringLiteral("/dev"));
    for (const QString& name : devices.entryList(
             {QStringLiteral("ttyUSB*"), QStringLiteral("ttyACM*"), QStringLiteral("ttyS?")}, QDir::System))
        paths << devices.filePath(name);
    return paths;
}

} // namespace

ConnectDialog::ConnectDialog(const std::optional<RadioProfile>& present, QWidget* parent)
    : QDialog(parent),
      m_profile(new ProfileRow(m_profiles.GetNames(),
                               tr("A receiver with a name is kept; choose it here the next time"),
                               tr("Forget the receiver of this name"), this)),
      m_search(new QLineEdit(this)),
      m_models(new QListWidget(this)),
      m_port(new QComboBox(this)),
      m_speed(new QComboBox(this)),
      m_timeout(new QSpinBox(this)),
      m_test(new QPushButton(tr("&Test"), this)),
      m_answer(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setWindowTitle(tr("Connect Receiver"));
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("&Name:"), m_profile);
    addModels(*form);
    addConnection(*form);
    addTest(*form);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("&Connect"));
    form->addRow(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] {
        if (const std::optional<RadioProfile> choice = GetChoice())
            m_profiles.Keep(*choice);
        accept();
    });
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_profile, &ProfileRow::Chosen, this,
            [this](const QString& name) { fill(*m_profiles.Find(name)); });
    connect(m_profile, &ProfileRow::Edited, this, &ConnectDialog::showProblem);
    connect(m_profile, &ProfileRow::Forgotten, this,
            [this](const QString& name) { m_profiles.Forget(name); });
    connect(new QShortcut(QKeySequence::HelpContents, this), &QShortcut::activated, this,
            [this] { HelpWindow::ShowFor(*this, this); });
    fill(present.value_or(RadioProfile{QString(), NoModel}));
    resize(UsualSize.boundedTo(screen()->availableSize() - Frame));
}

ConnectDialog::~ConnectDialog() = default;

void ConnectDialog::addModels(QFormLayout& form) {
    m_search->setObjectName(QStringLiteral("Search"));
    m_search->setPlaceholderText(tr("maker, model or number"));
    m_search->setClearButtonEnabled(true);
    form.addRow(tr("&Search:"), m_search);
    m_models->setObjectName(QStringLiteral("Models"));
    m_models->setAccessibleName(tr("Models"));
    m_models->setUniformItemSizes(true);
    const auto add = [this](const QString& text, int number) {
        auto* item = new QListWidgetItem(text, m_models);
        item->setData(Qt::UserRole, number);
    };
    add(tr("Simulated receiver"), NoModel);
    for (const RadioModel& model : RadioModels())
        add(tr("%1 (model %2)").arg(model.FullName()).arg(model.number), model.number);
    form.addRow(tr("&Model:"), m_models);
    connect(m_search, &QLineEdit::textChanged, this, &ConnectDialog::filter);
    connect(m_models, &QListWidget::currentRowChanged, this, &ConnectDialog::chooseModel);
}

void ConnectDialog::addConnection(QFormLayout& form) {
    m_port->setObjectName(QStringLiteral("Port"));
    m_port->setEditable(true);
    m_port->setInsertPolicy(QComboBox::NoInsert);
    form.addRow(tr("&Port:"), m_port);
    m_speed->addItem(tr("that of the model"), 0);
    for (const int speed : Speeds)
        m_speed->addItem(tr("%1 baud").arg(speed), speed);
    form.addRow(tr("Spee&d:"), m_speed);
    constexpr int Shortest = 100;
    constexpr int Longest = 60000;
    m_timeout->setRange(Shortest, Longest);
    m_timeout->setSingleStep(Shortest);
    m_timeout->setSuffix(QStringLiteral(" ms"));
    m_timeout->setToolTip(tr("How long one answer of the radio may take"));
    form.addRow(tr("T&ime-out:"), m_timeout);
    connect(m_port, &QComboBox::editTextChanged, this, &ConnectDialog::showProblem);
    connect(m_speed, &QComboBox::currentIndexChanged, this, &ConnectDialog::showProblem);
    connect(m_timeout, &QSpinBox::valueChanged, this, &ConnectDialog::showProblem);
}

void ConnectDialog::addTest(QFormLayout& form) {
    m_test->setObjectName(QStringLiteral("Test"));
    m_test->setAutoDefault(false);
    m_test->setToolTip(tr("Connect for a moment and show what the radio answers; nothing is set"));
    m_answer->setObjectName(QStringLiteral("Answer"));
    m_answer->setTextFormat(Qt::PlainText);
    m_answer->setWordWrap(true);
    m_answer->setMinimumHeight(3 * m_answer->fontMetrics().height());
    m_answer->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* row = new QHBoxLayout;
    row->addWidget(m_test, 0, Qt::AlignTop);
    row->addWidget(m_answer, 1);
    form.addRow(QString(), row);
    connect(m_test, &QPushButton::clicked, this, &ConnectDialog::test);
}

/// All words must be in it. What is chosen is seen.
void ConnectDialog::filter(const QString& words) {
    const QStringList wanted = words.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    int first = -1;
    for (int row = 0; row < m_models->count(); ++row) {
        QListWidgetItem* item = m_models->item(row);
        item->setHidden(!std::ranges::all_of(wanted, [item](const QString& word) {
            return item->text().contains(word, Qt::CaseInsensitive);
        }));
        if (first < 0 && !item->isHidden())
            first = row;
    }
    const QListWidgetItem* chosen = m_models->currentItem();
    if (first >= 0 && (!chosen || chosen->isHidden()))
        m_models->setCurrentRow(first);
}

void ConnectDialog::fill(const RadioProfile& profile) {
    for (int row = 0; row < m_models->count(); ++row) {
        if (m_models->item(row)->data(Qt::UserRole).toInt() == profile.model)
            m_models->setCurrentRow(row);
    }
    m_models->scrollToItem(m_models->currentItem(), QAbstractItemView::PositionAtCenter);
    m_profile->SetName(profile.name);
    if (!profile.port.isEmpty())
        m_port->setEditText(profile.port);
    m_speed->setCurrentIndex(std::max(m_speed->findData(profile.speed), 0));
    m_timeout->setValue(profile.timeout);
}

int ConnectDialog::chosenModel() const {
    const QListWidgetItem* item = m_models->currentItem();
    return item ? item->data(Qt::UserRole).toInt() : NoModel;
}

void ConnectDialog::chooseModel() {
    const RadioModel* model = FindRadioModel(chosenModel());
    fillPorts(model ? model->port : RadioModel::Port::None);
    m_speed->setEnabled(model && model->port == RadioModel::Port::Serial);
    m_timeout->setEnabled(model);
    m_profile->setEnabled(model);
    showProblem();
}

void ConnectDialog::fillPorts(RadioModel::Port port) {
    m_port->setEnabled(port != RadioModel::Port::None);
    m_port->clear();
    if (port == RadioModel::Port::Serial)
        m_port->addItems(serialPorts());
    else if (port == RadioModel::Port::Network)
        m_port->addItems(NetworkPorts);
}

std::optional<RadioProfile> ConnectDialog::GetChoice() const {
    if (chosenModel() == NoModel)
        return std::nullopt;
    return RadioProfile{m_profile->GetName(), chosenModel(), m_port->currentText().trimmed(),
                        m_speed->currentData().toInt(), m_timeout->value()};
}

/// What is missing stands where the answer of a test would.
void ConnectDialog::showProblem() {
    const std::optional<RadioProfile> choice = GetChoice();
    const QString problem = choice ? choice->Problem() : QString();
    m_tested.reset();
    m_answer->setText(problem);
    m_test->setEnabled(choice && problem.isEmpty());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(problem.isEmpty());
}

void ConnectDialog::test() {
    m_tested = std::make_unique<HamlibReceiver>(*GetChoice(), HamlibReceiver::Lost::GivenUp);
    m_answer->setText(tr("Connecting..."));
    connect(m_tested.get(), &ReceiverLink::StateChanged, m_answer,
            [this](ReceiverState state, const QString& words) {
                if (state == ReceiverState::NoAnswer)
                    m_answer->setText(tr("No answer: %1").arg(words));
                else if (state == ReceiverState::Refused)
                    m_answer->setText(tr("Refused: %1").arg(words));
            });
    connect(m_tested.get(), &ReceiverLink::Read, m_answer, [this](const ReceiverReading& reading) {
        QStringList said;
        for (const ReceiverWord& word : reading.values) {
            if (word.key == Keys::KeyFrequency)
                said << Quor::FrequencyText(word.text.toDouble());
            else if (word.key == Keys::KeyDemodulation)
                said << word.text;
            else if (word.key == Keys::KeyBandwidth)
                said << Quor::BandwidthText(word.text.toDouble());
        }
        if (reading.level)
            said << tr("%1 dBµV").arg(*reading.level, 0, 'f', 0);
        m_answer->setText(tr("It answers: %1").arg(said.join(QStringLiteral(", "))));
        // The next one would come while this one is told.
        QMetaObject::invokeMethod(
            m_answer, [this] { m_tested.reset(); }, Qt::QueuedConnection);
    });
    m_tested->Begin();
}
