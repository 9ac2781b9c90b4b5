#include "workstation/sharedialog.h"

#include "host/base/problems.h"
#include "host/gui/guibase.h"
#include "host/report/rgexception.h"
#include "workstation/sharepassword.h"
#include "workstation/shareprobe.h"
#include "workstation/sharing.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFormLayout>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QRadioButton>
#include <QToolButton>
#include <QUrl>

namespace {

constexpr int UsualWidth = 560;
constexpr int AnswerLines = 3;
constexpr int KindColumns = 2;

QLineEdit* makeField(QWidget* parent, const char* name, const QString& placeholder = {}) {
    auto* field = new QLineEdit(parent);
    field->setObjectName(QLatin1String(name));
    field->setPlaceholderText(placeholder);
    return field;
}

QCheckBox* makeBox(QWidget* parent, const char* name, const QString& text) {
    auto* box = new QCheckBox(text, parent);
    box->setObjectName(QLatin1String(name));
    return box;
}

/// A row of several widgets, of which the label means one.
void addRow(QFormLayout& form, const QString& label, QHBoxLayout* row, QWidget* buddy) {
    form.addRow(label, row);
    qobject_cast<QLabel*>(form.labelForField(row))->setBuddy(buddy);
}

} // namespace

ShareDialog::ShareDialog(const Sharing& sharing, const ShareProfile& present, bool atStart, QWidget* parent)
    : QDialog(parent),
      m_sharing(sharing),
      m_profile(new ProfileRow(
          m_profiles.GetNames(),
          tr("A connection with a name is kept, without its password; choose it here the next time"),
          tr("Forget the connection of this name"), this)),
      m_broker(makeField(this, "Broker", tr("host, or host:port"))),
      m_isEncrypted(makeBox(this, "Encrypted", tr("&Encrypted (TLS)"))),
      m_site(makeField(this, "Site", tr("lists of one site belong together"))),
      m_caFile(makeField(this, "CaFile", tr("those of the system"))),
      m_user(makeField(this, "User")),
      m_password(makeField(this, "Password", tr("from the keyring, if it is there"))),
      m_keepsPassword(makeBox(this, "KeepPassword", tr("&Keep it in the desktop's keyring"))),
      m_forget(new QPushButton(tr("F&orget"), this)),
      m_passwordFile(makeField(this, "PasswordFile", tr("none"))),
      m_certificateFile(makeField(this, "CertificateFile", tr("none"))),
      m_keyFile(makeField(this, "KeyFile", tr("none"))),
      m_client(new QRadioButton(tr("C&lient: show and edit the site's targets"), this)),
      m_server(new QRadioButton(tr("Ser&ver: let others work on lists of this window"), this)),
      m_atStart(makeBox(this, "AtStart", tr("Co&nnect when the program starts"))),
      m_test(new QPushButton(tr("&Test"), this)),
      m_answer(new QLabel(this)),
      m_buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this)) {
    setWindowTitle(tr("Share Lists"));
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("Na&me:"), m_profile);
    addBroker(*form);
    addUser(*form);
    addRole(*form);
    addTest(*form);
    m_buttons->button(QDialogButtonBox::Ok)->setText(tr("&Connect"));
    form->addRow(m_buttons);
    connect(m_buttons, &QDialogButtonBox::accepted, this, [this] {
        m_profiles.Keep(GetChoice());
        accept();
    });
    connect(m_buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(m_profile, &ProfileRow::Chosen, this,
            [this](const QString& name) { showProfile(*m_profiles.Find(name)); });
    connect(m_profile, &ProfileRow::Edited, this, &ShareDialog::showProblem);
    connect(m_profile, &ProfileRow::Forgotten, this, &ShareDialog::forgetProfile);
    m_atStart->setChecked(atStart);
    showProfile(present);
    resize(UsualWidth, sizeHint().height());
}

ShareDialog::~ShareDialog() = default;

void ShareDialog::addFile(QFormLayout& form, const QString& label, QLineEdit* field, const QString& title) {
    auto* row = new QHBoxLayout;
    auto* choose = new QToolButton(this);
    choose->setText(QStringLiteral("..."));
    choose->setAccessibleName(title);
    choose->setToolTip(title);
    row->addWidget(field, 1);
    row->addWidget(choose);
    connect(choose, &QToolButton::clicked, this, [this, field, title] {
        const QString path =
            QFileDialog::getOpenFileName(this, title, GuiBase::Instance().GetCurrentDirectory(), QString(),
                                         nullptr, GuiBase::Instance().UseNativeDialogs());
        if (!path.isEmpty())
            field->setText(path);
    });
    addRow(form, label, row, field);
}

void ShareDialog::addBroker(QFormLayout& form) {
    m_isEncrypted->setToolTip(tr("A broker of another machine is reached in no other way"));
    auto* row = new QHBoxLayout;
    row->addWidget(m_broker, 1);
    row->addWidget(m_isEncrypted);
    addRow(form, tr("&Broker:"), row, m_broker);
    form.addRow(tr("&Site:"), m_site);
    addFile(form, tr("&Authorities:"), m_caFile, tr("Certificates of authorities (CA)"));
    m_caFile->setToolTip(tr("Certificates by which the broker's is checked"));
    for (QLineEdit* field : {m_broker, m_site})
        connect(field, &QLineEdit::textChanged, this, &ShareDialog::showProblem);
    connect(m_isEncrypted, &QCheckBox::toggled, this, &ShareDialog::showProblem);
}

void ShareDialog::addUser(QFormLayout& form) {
    m_password->setEchoMode(QLineEdit::Password);
    m_keepsPassword->setToolTip(tr("Without a keyring it is asked for each time"));
    m_forget->setObjectName(QStringLiteral("Forget"));
    m_forget->setToolTip(tr("Remove the password of this user at this broker from the desktop's keyring"));
    m_forget->setAutoDefault(false);
    auto* keeping = new QHBoxLayout;
    keeping->addWidget(m_keepsPassword, 1);
    keeping->addWidget(m_forget);
    form.addRow(tr("&User:"), m_user);
    form.addRow(tr("&Password:"), m_password);
    form.addRow(QString(), keeping);
    addFile(form, tr("Pass&word file:"), m_passwordFile, tr("File with the password"));
    m_passwordFile->setToolTip(tr("Its first line is the password; nobody else may read it (mode 600)"));
    addFile(form, tr("Certi&ficate:"), m_certificateFile, tr("Certificate of this seat"));
    addFile(form, tr("Ke&y:"), m_keyFile, tr("Key of the certificate"));
    connect(m_user, &QLineEdit::textChanged, this, &ShareDialog::showProblem);
    connect(m_password, &QLineEdit::textChanged, this,
            [this](const QString& text) { m_keepsPassword->setEnabled(!text.isEmpty()); });
    m_keepsPassword->setEnabled(false);
    connect(m_forget, &QPushButton::clicked, this, [this] { forgetPassword(GetChoice()); });
}

void ShareDialog::addRole(QFormLayout& form) {
    m_client->setObjectName(QStringLiteral("Client"));
    m_server->setObjectName(QStringLiteral("Server"));
    form.addRow(tr("This seat is:"), m_client);
    form.addRow(QString(), m_server);
    auto* grid = new QGridLayout;
    auto* targets = makeBox(this, "target", FindShareKind(QStringLiteral("target"))->Title());
    targets->setChecked(true);
    targets->setEnabled(false);
    grid->addWidget(targets, 0, 0);
    for (const QString& name : m_sharing.KindsToServe()) {
        auto* box = makeBox(this, name.toLatin1().constData(), FindShareKind(name)->Title());
        m_kinds.emplace_back(name, box);
        grid->addWidget(box, static_cast<int>(m_kinds.size()) / KindColumns,
                        static_cast<int>(m_kinds.size()) % KindColumns);
        connect(m_server, &QRadioButton::toggled, box, &QWidget::setEnabled);
        box->setEnabled(false);
    }
    grid->setColumnStretch(KindColumns, 1);
    form.addRow(tr("It serves:"), grid);
    form.addRow(QString(), m_atStart);
}

void ShareDialog::addTest(QFormLayout& form) {
    m_test->setObjectName(QStringLiteral("Test"));
    m_test->setAutoDefault(false);
    m_test->setToolTip(tr("Connect for a moment and show what the broker answers; nothing is shared"));
    m_answer->setObjectName(QStringLiteral("Answer"));
    m_answer->setTextFormat(Qt::PlainText);
    m_answer->setWordWrap(true);
    m_answer->setMinimumHeight(AnswerLines * m_answer->fontMetrics().height());
    m_answer->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    auto* row = new QHBoxLayout;
    row->addWidget(m_test, 0, Qt::AlignTop);
    row->addWidget(m_answer, 1);
    form.addRow(QString(), row);
    connect(m_test, &QPushButton::clicked, this, &ShareDialog::test);
}

void ShareDialog::showProfile(const ShareProfile& profile) {
    const QUrl url(profile.url);
    m_profile->SetName(profile.name);
    m_broker->setText(url.port() < 0 ? url.host() : QStringLiteral("%1:%2").arg(url.host()).arg(url.port()));
    m_isEncrypted->setChecked(url.scheme() != QLatin1String("mqtt"));
    m_site->setText(url.path().mid(1));
    m_user->setText(url.userName());
    m_caFile->setText(profile.caFile);
    m_passwordFile->setText(profile.passwordFile);
    m_certificateFile->setText(profile.certificateFile);
    m_keyFile->setText(profile.keyFile);
    m_password->clear();
    (profile.role == ShareProfile::Role::Server ? m_server : m_client)->setChecked(true);
    for (const auto& [name, box] : m_kinds)
        box->setChecked(profile.kinds.contains(name));
    showProblem();
}

ShareProfile ShareDialog::GetChoice() const {
    QUrl url(QStringLiteral("%1://%2").arg(m_isEncrypted->isChecked() ? QLatin1String("mqtts")
                                                                      : QLatin1String("mqtt"),
                                           m_broker->text().trimmed()));
    url.setUserName(m_user->text().trimmed());
    url.setPath(QLatin1Char('/') + m_site->text().trimmed());
    ShareProfile profile;
    profile.name = m_profile->GetName();
    profile.url = url.toString(QUrl::FullyEncoded);
    profile.role = m_server->isChecked() ? ShareProfile::Role::Server : ShareProfile::Role::Client;
    profile.passwordFile = m_passwordFile->text().trimmed();
    profile.caFile = m_caFile->text().trimmed();
    profile.certificateFile = m_certificateFile->text().trimmed();
    profile.keyFile = m_keyFile->text().trimmed();
    for (const auto& [name, box] : m_kinds) {
        if (box->isChecked())
            profile.kinds << name;
    }
    return profile;
}

QString ShareDialog::Password() const {
    return m_password->text();
}

bool ShareDialog::KeepsPassword() const {
    return m_keepsPassword->isChecked() && !m_password->text().isEmpty();
}

bool ShareDialog::IsAtStart() const {
    return m_atStart->isChecked();
}

/// What is missing stands where the answer of a test would.
void ShareDialog::showProblem() {
    const QString problem = m_broker->text().trimmed().isEmpty() ? tr("Name the broker's machine.")
                            : m_site->text().trimmed().isEmpty() ? tr("Name the site.")
                                                                 : GetChoice().Problem();
    m_probe.reset();
    m_answer->setText(problem);
    m_test->setEnabled(problem.isEmpty());
    m_forget->setEnabled(problem.isEmpty() && !m_user->text().trimmed().isEmpty());
    m_buttons->button(QDialogButtonBox::Ok)->setEnabled(problem.isEmpty());
}

void ShareDialog::test() {
    if (!m_password->text().isEmpty())
        return probe(m_password->text());
    m_answer->setText(tr("The keyring is asked; it may have to be unlocked."));
    try {
        const ShareProfile asked = GetChoice();
        SharePassword::Find(asked, *this, [this, asked](const QString& password, const QString& whyNone) {
            if (GetChoice().url != asked.url)
                return; // it is for another broker
            if (password.isEmpty() && asked.NeedsPassword())
                m_answer->setText(tr("No password: %1. Type it, or name a password file.").arg(whyNone));
            else
                probe(password);
        });
    } catch (const RGException& exception) {
        m_answer->setText(exception.GetErrorText());
    }
}

void ShareDialog::probe(const QString& password) {
    try {
        BrokerAddress address = GetChoice().Address();
        address.password = password;
        m_probe = std::make_unique<ShareProbe>(m_sharing.MakeBus(address), address.site);
    } catch (const RGException& exception) {
        m_answer->setText(exception.GetErrorText());
        return;
    }
    const auto showAnswer = [this] { m_answer->setText(m_probe->Answer()); };
    connect(m_probe.get(), &ShareProbe::Changed, this, showAnswer);
    showAnswer();
}

/// The password goes with the last connection that needs it.
void ShareDialog::forgetProfile(const QString& name) {
    const ShareProfile forgotten = *m_profiles.Find(name);
    m_profiles.Forget(name);
    if (!forgotten.passwordFile.isEmpty() || forgotten.Address().user.isEmpty())
        return;
    const auto needs = [&](const ShareProfile& other) { return SharePassword::IsShared(forgotten, other); };
    const auto other = std::ranges::find_if(m_profiles.GetAll(), needs);
    const ShareProfile atStart = ShareProfile::AtStart();
    if (other != m_profiles.GetAll().end())
        m_answer->setText(tr("The password stays in the keyring: %1 needs it, too.").arg(other->name));
    else if (!atStart.url.isEmpty() && needs(atStart))
        m_answer->setText(
            tr("The password stays in the keyring: the connection at the program's start needs it."));
    else
        forgetPassword(forgotten);
}

/// The keyring may answer when the dialog is closed.
void ShareDialog::forgetPassword(const ShareProfile& profile) {
    m_answer->setText(tr("The keyring is asked; it may have to be unlocked."));
    SharePassword::Forget(profile, *qApp, [dialog = QPointer(this)](const QString& reason) {
        const QString failure =
            reason.isEmpty() ? QString() : tr("The password was not removed: %1.").arg(reason);
        if (dialog)
            dialog->m_answer->setText(
                reason.isEmpty() ? tr("The keyring has no password of this user any more.") : failure);
        else if (!failure.isEmpty())
            Problems::Report("sharedialog", {tr("Keyring"), 0, failure});
    });
}
