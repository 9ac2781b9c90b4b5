#include "host/base/frequencyinput.h"
#include "host/base/frequencytext.h"
#include "host/base/query.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <cmath>
#include <limits>

namespace {

constexpr double Infinity = std::numeric_limits<double>::infinity();

QString tr(const char* text) {
    return QCoreApplication::translate("QueryParser", text);
}

QString quoted(const QString& text) {
    return QLatin1Char('"') + text + QLatin1Char('"');
}

QString lettersOf(QString text) {
    static const QRegularExpression Others(QStringLiteral(R"([^\p{L}\p{N}]+)"));
    return text.remove(Others).toLower();
}

/// Other names of columns, for lists that have no column of the name typed.
constexpr std::pair<const char*, const char*> OtherNames[] = {{"comment", "name"},
                                                              {"name", "comment"},
                                                              {"bw", "bandwidth"},
                                                              {"mode", "demodulation"},
                                                              {"mod", "demodulation"},
                                                              {"lvl", "level"},
                                                              {"threat", "threadclass"},
                                                              {"threat", "threatclass"},
                                                              {"threatclass", "threadclass"},
                                                              {"class", "signalclass"},
                                                              {"system", "transmissionsystem"}};

/// How well a typed name names a column: 2 it is its title, 1 it begins the title or a word of it, 0 not.
int fit(const QString& name, const QString& title) {
    static const QRegularExpression Gaps(QStringLiteral(R"([^\p{L}\p{N}]+)"));
    const QString letters = lettersOf(title);
    if (letters == name)
        return 2;
    bool begins = letters.startsWith(name);
    for (const QString& word : title.toLower().split(Gaps))
        begins = begins || word.startsWith(name);
    return begins ? 1 : 0;
}

std::vector<int> columnsNamed(const QString& name, const QStringList& titles) {
    std::vector<int> columns;
    int best = 1;
    for (int column = 0; column < titles.size(); ++column) {
        const int how = fit(name, titles[column]);
        if (how < best)
            continue;
        if (how > best)
            columns.clear();
        best = how;
        columns.push_back(column);
    }
    return columns;
}

std::vector<int> columnsCalled(const QString& typed, const QStringList& titles) {
    const QString name = lettersOf(typed);
    std::vector<int> columns;
    if (name.isEmpty())
        return columns;
    columns = columnsNamed(name, titles);
    for (const auto& [given, meant] : OtherNames) {
        if (columns.empty() && name == QLatin1String(given))
            columns = columnsNamed(QString::fromLatin1(meant), titles);
    }
    return columns;
}

/// A number as typed: its value, and half of its last digit.
struct Typed {
    double value;
    double half;
};

Typed typed(const QString& number, const QString& unit) {
    const bool isNegative = number.startsWith(QLatin1Char('-'));
    const bool isSigned = isNegative || number.startsWith(QLatin1Char('+'));
    const Quor::FrequencyInput input =
        Quor::ReadFrequencyInput(number.mid(isSigned ? 1 : 0) + unit.trimmed(), 1);
    if (!input.IsFrequency())
        return {std::nan(""), 0};
    return {isNegative ? -input.hertz : input.hertz, input.step / 2};
}

struct Comparison {
    const char* sign;
    const char* text;
    bool isBelow;
    bool takesIn; ///< the number itself
};

constexpr Comparison Comparisons[] = {{"<=", QT_TRANSLATE_NOOP("Query", "at most %1"), true, true},
                                      {">=", QT_TRANSLATE_NOOP("Query", "at least %1"), false, true},
                                      {"<", QT_TRANSLATE_NOOP("Query", "below %1"), true, false},
                                      {">", QT_TRANSLATE_NOOP("Query", "above %1"), false, false}};

} // namespace

/// Reads a query from its beginning to its end, or to the first thing that it does not understand.
class QueryParser {
public:
    QueryParser(const QString& text, const QStringList& titles) : m_text(text), m_titles(titles) {}

    Query Parse() {
        m_query.m_text = m_text;
        m_query.m_columnCount = static_cast<int>(m_titles.size());
        m_query.m_alternatives.emplace_back();
        while (skipBlanks() && !m_query.m_problem)
            readNext();
        if (!m_query.m_problem && m_query.m_alternatives.back().empty() && m_query.m_alternatives.size() > 1)
            fail(m_text.size(), tr("Nothing follows \"or\""));
        if (m_query.m_problem)
            takeAsWords();
        if (m_query.m_alternatives.front().empty())
            m_query.m_alternatives.clear();
        return std::move(m_query);
    }

private:
    using Term = Query::Term;

    bool skipBlanks() {
        while (m_at < m_text.size() && m_text[m_at].isSpace())
            ++m_at;
        return m_at < m_text.size();
    }

    void fail(qsizetype position, const QString& reason) {
        if (!m_query.m_problem)
            m_query.m_problem = Query::Misreading{position, reason};
    }

    void takeAsWords() {
        m_query.m_alternatives.assign(1, {});
        for (const QString& word : m_text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts))
            m_query.m_alternatives.front().push_back(wordTerm(word));
    }

    /// What stands there up to the next blank.
    QString token() const {
        qsizetype end = m_at;
        while (end < m_text.size() && !m_text[end].isSpace())
            ++end;
        return m_text.mid(m_at, end - m_at);
    }

    bool takeToken(QLatin1String word) {
        if (token().compare(word, Qt::CaseInsensitive) != 0)
            return false;
        m_at += word.size();
        return true;
    }

    void readNext() {
        const qsizetype start = m_at;
        if (takeToken(QLatin1String("or"))) {
            if (m_query.m_alternatives.back().empty())
                return fail(start, tr("Nothing stands before \"or\""));
            m_query.m_alternatives.emplace_back();
            return;
        }
        const bool isNegated = takeNot();
        if (!skipBlanks())
            return fail(start, tr("Nothing follows \"not\""));
        std::optional<Term> term = readTerm();
        if (!term)
            return;
        term->isNegated = isNegated;
        m_query.m_alternatives.back().push_back(std::move(*term));
    }

    /// A minus sign counts only before what is no number: "-90" is a text like others.
    bool takeNot() {
        if (takeToken(QLatin1String("not")))
            return true;
        const bool isNot = m_text[m_at] == QLatin1Char('-') && m_at + 1 < m_text.size() &&
                           (m_text[m_at + 1].isLetter() || m_text[m_at + 1] == QLatin1Char('"'));
        m_at += isNot ? 1 : 0;
        return isNot;
    }

    std::optional<Term> readTerm() {
        static const QRegularExpression Field(QStringLiteral(R"re((?:(\p{L}[\p{L}\p{N}_.]*)|"([^"]+)"):)re"));
        const QRegularExpressionMatch field = matchHere(Field);
        if (field.hasMatch())
            return readField(field.captured(1) + field.captured(2), field.capturedLength());
        if (std::optional<Term> frequency = readNumbers(false)) {
            frequency->columns = columnsNamed(QStringLiteral("frequency"), m_titles);
            frequency->description = tr("frequency %1").arg(frequency->description);
            return frequency;
        }
        return readWord();
    }

    std::optional<Term> readField(const QString& name, qsizetype length) {
        const qsizetype start = m_at;
        const std::vector<int> columns = columnsCalled(name, m_titles);
        if (columns.empty()) {
            fail(start, tr("No column is called \"%1\"").arg(name));
            return std::nullopt;
        }
        m_at += length;
        std::optional<Term> term;
        if (m_at == m_text.size() || m_text[m_at].isSpace())
            fail(m_at, tr("Nothing follows \"%1:\"").arg(name));
        else if (term = readNumbers(true); !term)
            term = readWord();
        if (!term)
            return std::nullopt;
        const QString title = columns.size() == 1 ? m_titles[columns.front()] : name;
        term->description = (term->range ? tr("%1 %2") : tr("%1 with %2")).arg(title, term->description);
        term->columns = columns;
        return term;
    }

    static Term wordTerm(const QString& word) {
        Term term;
        term.word = word;
        // Of what has no case, such as a number, a plain search finds the same, and sooner.
        term.wordCase = word.toLower() == word.toUpper() ? Qt::CaseSensitive : Qt::CaseInsensitive;
        term.description = quoted(word);
        return term;
    }

    std::optional<Term> readWord() {
        if (m_text[m_at] != QLatin1Char('"')) {
            const QString word = token();
            m_at += word.size();
            return wordTerm(word);
        }
        const qsizetype end = m_text.indexOf(QLatin1Char('"'), m_at + 1);
        if (end <= m_at + 1) {
            fail(m_at, end < 0 ? tr("The quotation is not closed") : tr("The quotation is empty"));
            return std::nullopt;
        }
        const QString words = m_text.mid(m_at + 1, end - m_at - 1);
        m_at = end + 1;
        return wordTerm(words);
    }

    QRegularExpressionMatch matchHere(const QRegularExpression& expression) const {
        return expression.match(m_text, m_at, QRegularExpression::NormalMatch,
                                QRegularExpression::AnchorAtOffsetMatchOption);
    }

    /// A number, a comparison or a range: in a field all that count, else those in a unit of frequency only.
    std::optional<Term> readNumbers(bool inField) {
        static const QRegularExpression Numbers(
            QStringLiteral(
                R"((<=|>=|=|<|>)?\s*([-+]?\d(?:[\d'\x{a0}\x{202f}]|[.,](?!\.))*)(\s*[kMG]?Hz|k|dB[\wµ/]*|%)?)"
                R"((?:\s*(?:-|–|\.\.)\s*([-+]?\d(?:[\d'\x{a0}\x{202f}]|[.,](?!\.))*))"
                R"((\s*[kMG]?Hz|k|dB[\wµ/]*|%)?)?(?=\s|$))"),
            QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption);
        const QRegularExpressionMatch match = matchHere(Numbers);
        if (!match.hasMatch())
            return std::nullopt;
        const bool isRange = match.hasCaptured(4);
        const QString sign = match.captured(1);
        const QString unit = match.captured(isRange ? 5 : 3);
        const QString firstUnit = match.captured(3).isEmpty() ? unit : match.captured(3);
        const bool inHertz = !unit.isEmpty() && isFrequencyUnit(unit);
        const bool isSigned = match.captured(2).startsWith(QLatin1Char('-'));
        if (!inField && (!inHertz || isSigned)) {
            if (!sign.isEmpty())
                fail(m_at, tr("After \"%1\" comes a frequency with its unit").arg(sign));
            return std::nullopt;
        }
        const Typed first = typed(match.captured(2), isFrequencyUnit(firstUnit) ? firstUnit : QString());
        const Typed second = isRange ? typed(match.captured(4), inHertz ? unit : QString()) : first;
        if (std::isnan(first.value) || std::isnan(second.value) || (isRange && !sign.isEmpty())) {
            fail(m_at, tr("\"%1\" is no number or range").arg(match.captured()));
            return std::nullopt;
        }
        m_at += match.capturedLength();
        Term term = isRange ? between(first, second, inHertz) : compared(sign, first, inHertz);
        if (inField && sign.isEmpty() && !isRange)
            term.word = match.captured(); // of cells that are no numbers
        return term;
    }

    static bool isFrequencyUnit(const QString& unit) {
        QStringView rest = QStringView(unit).trimmed();
        return Quor::TakeUnit(rest, 0) > 0 && rest.isEmpty();
    }

    static QString numberText(double number, bool inHertz) {
        return inHertz ? Quor::ShortFrequencyText(number) : QString::number(number, 'g', 10);
    }

    static Term between(const Typed& a, const Typed& b, bool inHertz) {
        Term term;
        term.range = Query::Range{std::min(a.value, b.value), std::max(a.value, b.value), inHertz};
        term.description =
            tr("%1 to %2").arg(numberText(term.range->from, inHertz), numberText(term.range->to, inHertz));
        return term;
    }

    static Term compared(const QString& sign, const Typed& number, bool inHertz) {
        Term term;
        const QString text = numberText(number.value, inHertz);
        for (const Comparison& known : Comparisons) {
            if (sign != QLatin1String(known.sign))
                continue;
            const double away = known.isBelow ? -Infinity : Infinity;
            const double end = known.takesIn ? number.value : std::nextafter(number.value, away);
            term.range =
                known.isBelow ? Query::Range{-Infinity, end, inHertz} : Query::Range{end, Infinity, inHertz};
            term.description = tr(known.text).arg(text);
            return term;
        }
        term.range = Query::Range{number.value - number.half,
                                  std::nextafter(number.value + number.half, -Infinity), inHertz};
        term.description = inHertz ? tr("%1 ± %2").arg(text, numberText(number.half, true)) : text;
        return term;
    }

    const QString& m_text;
    const QStringList& m_titles;
    qsizetype m_at = 0;
    Query m_query;
};

Query Query::Parse(const QString& text, const QStringList& columnTitles) {
    return QueryParser(text, columnTitles).Parse();
}
