#include "workstation/bandspanel.h"

#include "host/base/frequencytext.h"
#include "host/freqlist/freqstore.h"
#include "workstation/noibands.h"

#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QPlainTextEdit>
#include <QPushButton>

namespace {

/// More are not read by anybody; copying takes them all.
constexpr size_t MaxLines = 5000;

} // namespace

BandsPanel::BandsPanel(const NoiBands& bands, QWidget* parent)
    : QWidget(parent),
      m_bands(bands),
      m_heading(new QLabel(this)),
      m_text(new QPlainTextEdit(this)),
      m_copy(new QPushButton(tr("Copy"), this)) {
    m_text->setReadOnly(true);
    m_text->setAccessibleName(tr("NOI bands"));
    m_text->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    m_copy->setToolTip(tr("Copy all bands as \"lower,upper;\" in hertz"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    auto* head = new QHBoxLayout;
    head->addWidget(m_heading, 1);
    head->addWidget(m_copy);
    layout->addLayout(head);
    layout->addWidget(m_text, 1);
    connect(m_copy, &QPushButton::clicked, this, &BandsPanel::Copy);
    connect(&bands, &NoiBands::Changed, this, [this] {
        m_stale = true;
        if (isVisible())
            fill();
    });
}

void BandsPanel::Copy() {
    FreqStore::Instance().SetClipboardText(m_bands.GetDefinition());
}

void BandsPanel::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    if (m_stale)
        fill();
}

void BandsPanel::fill() {
    m_stale = false;
    const std::vector<NoiBands::Band>& bands = m_bands.GetBands();
    const QLocale locale;
    const auto count = [&](size_t number) { return locale.toString(static_cast<qulonglong>(number)); };
    m_heading->setText(bands.size() == m_bands.GetCount()
                           ? tr("%Ln bands", nullptr, static_cast<int>(bands.size()))
                           : tr("%Ln bands of %1 frequencies", nullptr, static_cast<int>(bands.size()))
                                 .arg(count(m_bands.GetCount())));
    m_copy->setEnabled(!bands.empty());
    QString text;
    for (size_t i = 0; i < std::min(bands.size(), MaxLines); ++i) {
        text += QStringLiteral("%1 – %2\n")
                    .arg(Quor::FrequencyText(bands[i].from), 16)
                    .arg(Quor::FrequencyText(bands[i].to), 16);
    }
    if (bands.size() > MaxLines)
        text += tr("and %1 more").arg(count(bands.size() - MaxLines));
    m_text->setPlainText(text.trimmed().isEmpty() ? QString() : text);
}
