#include "host/valuetree/value.h"

#include <QStringList>

bool ValueText<bool>::FromText(const QString& text, bool& value) {
    const bool yes = text == QLatin1String("true") || text == QLatin1String("1");
    if (!yes && text != QLatin1String("false") && text != QLatin1String("0"))
        return false;
    value = yes;
    return true;
}

bool ValueText<char>::FromText(const QString& text, char& value) {
    int code = 0;
    if (!Quor::ParseInt(text, code) || code < -128 || code > 127)
        return false;
    value = static_cast<char>(code);
    return true;
}

void Detail::ContentOf<QString, ValueBase>::SetText(QStringView text, IObserver* originator) {
    if (text == GetValue())
        return;
    ChangeRecorder::NoteChange(*this, originator);
    const Texts::Id old = m_text;
    m_text = IsOfShape() ? Texts::KeepForEntry(NameId(), text) : Texts::Keep(text.toString());
    Texts::Release(old);
    HasChanged(TChangeCode::ValueChanged, originator);
}

QString ValueListTraits<double>::ToText(const Container& list) {
    QString text;
    for (const double element : list) {
        if (!text.isEmpty())
            text += QLatin1Char(';');
        text += Quor::ToShortest(element);
    }
    return text;
}

bool ValueListTraits<double>::FromText(const QString& text, Container& list) {
    if (text.isEmpty())
        return true;
    for (const QStringView part : QStringView(text).split(QLatin1Char(';'))) {
        double element = 0;
        if (!Quor::ParseDouble(part, element))
            return false;
        list.push_back(element);
    }
    return true;
}
