#include "controls/frequencystore/results/searchmcdatamediator.h"

#include "controls/frequencystore/results/searchmcdataresult.h"
#include "host/base/datetime.h"
#include "host/base/fixedplace.h"
#include "host/base/numbers.h"
#include "host/base/tokenizer.h"
#include "host/base/trace.h"
#include "host/freqstorexml/frequencystorelist.h"

namespace {

/// Numbers of the fields of a line, in its order; the lower ones are those of every entry.
enum Field {
    FieldFrequency = 5,
    FieldBandwidth,
    FieldType,
    FieldLocked,
    FieldLockTime,
    FieldConfidence,
};

constexpr char LetterUnlocked = 'c';
constexpr char LetterLocked = 'b';
constexpr char LetterClassified = 'p';

constexpr qint64 MicrosecondsPerSecond = 1000000;

} // namespace

static_assert(sizeof(void*) != 8 || sizeof(SearchMCDataMediator) == 64, "there are a million of them");

SearchMCDataMediator::SearchMCDataMediator(MediatorCtrl* controller, Observable* node, int kind)
    : HalvoITNodeMediator(controller, node, kind, MediatorType::SearchMCData) {
    bindOwn();
}

void SearchMCDataMediator::UpdateDependentValues() {
    HalvoITNodeMediator::UpdateDependentValues();
    bindOwn();
}

void SearchMCDataMediator::bindOwn() {
    static constexpr Binding table[] = {{&Keys::LockTime, TypesOf(ValueType::NumericInt64)},
                                        {&Keys::Locked, TypesOf(ValueType::Selection)},
                                        {&Keys::Confidence, TypesOf(ValueType::NumericInt)}};
    static_assert(std::size(table) == BoundEnd - BoundLockTime);
    static const Bindings bindings{BoundLockTime, table};
    Bind(bindings);
    checkType();
}

void SearchMCDataMediator::checkType() {
    m_letter = LetterUnlocked;
    if (HeldLocked() && !HeldLocked()->GetStringValue().contains(LockText::Unlocked()))
        m_letter = LetterLocked;
    if (HeldConfidence() && HeldConfidence()->GetValue() > 0)
        m_letter = LetterClassified;
    if (HeldType())
        HeldType()->SetValue(m_letter, this);
}

void SearchMCDataMediator::Update(Observable* subject, TChangeCode code) {
    if (subject == m_observable && code == TChangeCode::MediatorNodeEnds) {
        HalvoITNodeMediator::Update(subject, code); // ends this mediator
        return;
    }
    if (code == TChangeCode::Removing) {
        for (size_t number = BoundLockTime; number < BoundEnd && !ForgetIfRemoved(number, subject); ++number)
            ;
        HalvoITNodeMediator::Update(subject, code);
        // A value on its way out is still under its node; binding it again would hold on to it.
        checkType();
        return;
    }
    UpdateDependentValues();
    HalvoITNodeMediator::Update(subject, code);
}

QString SearchMCDataMediator::GetUsage() {
    return FreqStoreXml::FrequencyStoreList::UsageToName(FreqStoreXml::FrequencyStoreList::SearchResults);
}

bool SearchMCDataMediator::GetLockResult(QString& state) {
    if (HeldLocked())
        state = HeldLocked()->GetStringValue();
    return HeldLocked() != nullptr;
}

bool SearchMCDataMediator::GetLockTime(QString& time) {
    quint64 microseconds = 0;
    if (!GetLockTime(microseconds))
        return false;
    time = Quor::DateTime(microseconds).toString(Quor::DateTime::Local_TimeZone);
    return true;
}

bool SearchMCDataMediator::GetLockTime(quint64& microseconds) {
    if (HeldLockTime())
        microseconds = static_cast<quint64>(HeldLockTime()->GetValue());
    return HeldLockTime() != nullptr;
}

bool SearchMCDataMediator::GetConfidence(int& percent) {
    if (HeldConfidence())
        percent = HeldConfidence()->GetValue();
    return HeldConfidence() != nullptr;
}

void SearchMCDataMediator::SetLockResult(const QString& state) {
    SearchMCDataResult(GetNode(), false, nullptr).SetLocked(state);
}

void SearchMCDataMediator::SetLockTime(quint64 microseconds) {
    if (HeldLockTime())
        HeldLockTime()->SetValue(static_cast<qint64>(microseconds));
}

void SearchMCDataMediator::SetConfidence(int percent) {
    if (HeldConfidence())
        HeldConfidence()->SetValue(percent);
}

void SearchMCDataMediator::SetBandwidth(double hertz) {
    SearchMCDataResult(GetNode(), false, nullptr).SetBandwidth(hertz);
}

bool SearchMCDataMediator::CellText(unsigned columnId, QString& text) {
    switch (columnId) {
    case SourceLocked:
        return GetLockResult(text);
    case SourceLockTime:
        return GetLockTime(text);
    case SourceConfidence:
        if (HeldConfidence())
            text = HeldConfidence()->GetStringValue();
        return HeldConfidence() != nullptr;
    default:
        return HalvoITNodeMediator::CellText(columnId, text);
    }
}

void SearchMCDataMediator::UpdateMyViewItems(FrequencyNodeListView* view) {
    if (!GetItem4View(view)) {
        TraceLazily(FixedPlace::ResultWithoutRow,
                    [] { return QStringLiteral("No valid View Item for Memory - Field"); });
    }
    // The base fills all cells, those of this list too, through CellText.
    HalvoITNodeMediator::UpdateMyViewItems(view);
}

void SearchMCDataMediator::AddToXml(FreqStoreXml::FrequencyStoreList& list) {
    char type = m_letter;
    QString state;
    quint64 lockTime = 0;
    int confidence = 0;
    GetType(type, 0);
    GetLockResult(state);
    GetLockTime(lockTime);
    GetConfidence(confidence);

    HalvoITNodeMediator::AddToXml(list);
    FreqStoreXml::FrequencyStoreEntry& entry = list.GetFrequencyStoreEntry().last();
    entry.SetType(QString(QLatin1Char(type)));
    FreqStoreXml::ResultList result;
    result.SetConfidence(confidence);
    result.SetResultTime(
        QDateTime::fromSecsSinceEpoch(static_cast<qint64>(lockTime) / MicrosecondsPerSecond, Qt::UTC));
    result.SetReason(state);
    entry.SetResultList(result);
}

QString SearchMCDataMediator::ToString() {
    double frequency = 0;
    double bandwidth = 0;
    char type = 0;
    QString state;
    quint64 lockTime = 0;
    int confidence = 0;
    if (!GetFrequency(frequency, 0) || !GetType(type, 0) || !GetBandwidth(bandwidth, 0) ||
        !GetLockResult(state) || !GetLockTime(lockTime) || !GetConfidence(confidence))
        return QString();

    const QLatin1Char tab('\t');
    QString line;
    line.reserve(96);
    Quor::AppendFixed(line, frequency, 6);
    line += QLatin1String("\t\t");
    Quor::AppendFixed(line, bandwidth, 6);
    line += QLatin1String("\t\t");
    line += QLatin1Char(type);
    line += tab;
    line += Quor::OneField(state);
    line += tab;
    line += QString::number(lockTime);
    line += tab;
    line += QString::number(confidence);
    line += tab;
    return line;
}

bool SearchMCDataMediator::FromString(QString& line) {
    const QString tab(QLatin1Char('\t'));
    Quor::Tokenizer tokens(tab + line);
    QString token = tokens(tab);
    bool any = false;
    for (int field = FieldFrequency; field <= FieldConfidence && !token.isEmpty(); ++field) {
        if (SetValueFromString(field, token)) {
            any = true;
            token = tokens(tab);
        }
    }
    return any;
}

bool SearchMCDataMediator::SetValueFromString(int field, QString& text) {
    switch (field) {
    case FieldFrequency:
        SetFrequency(Quor::toDoubleEx(text));
        return true;
    case FieldBandwidth:
        SetBandwidth(Quor::toDoubleEx(text));
        return true;
    case FieldType:
        SetType(text.isEmpty() ? '\0' : text.at(0).toLatin1());
        return true;
    case FieldLocked:
        SetLockResult(text);
        return true;
    case FieldLockTime:
        SetLockTime(text.toULongLong());
        return true;
    case FieldConfidence:
        SetConfidence(text.toInt());
        return true;
    default:
        return HalvoITNodeMediator::SetValueFromString(field, text);
    }
}
