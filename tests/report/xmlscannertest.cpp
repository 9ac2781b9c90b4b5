#include "tests/report/xmlshape.h"

#include <QRandomGenerator>

#include <gtest/gtest.h>

using namespace REPORTGENERATOR;

namespace {

/// Gives its bytes a few at a time, so that every token is cut somewhere.
class TricklingDevice : public QIODevice {
public:
    TricklingDevice(QByteArray bytes, qint64 step) : m_bytes(std::move(bytes)), m_step(step) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

protected:
    qint64 readData(char* data, qint64 size) override {
        const qint64 count = std::min({size, m_step, m_bytes.size() - m_at});
        std::copy_n(m_bytes.constData() + m_at, count, data);
        m_at += count;
        return count;
    }
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qint64 m_step;
    qint64 m_at = 0;
};

/// The document in short, or "!" and the error.
QString Scan(QIODevice& device) {
    const XmlShape shape = ShapeByScanner(device);
    return QString::fromStdString(shape.refusal.empty() ? shape.text : '!' + shape.refusal);
}

QString Scan(const QByteArray& bytes, qint64 step = 1'000'000) {
    TricklingDevice device(bytes, step);
    return Scan(device);
}

struct Document {
    const char* name;
    QByteArray bytes;
    QString scanned;
};

class WellFormed : public testing::TestWithParam<Document> {};

TEST_P(WellFormed, ReadsTheSameHoweverTheBytesArrive) {
    const Document& document = GetParam();
    for (const qint64 step : {1, 2, 3, 7, 1'000'000})
        EXPECT_EQ(Scan(document.bytes, step), document.scanned) << "in steps of " << step;
    EXPECT_EQ(QString::fromStdString(ShapeByExpat(document.bytes).text), document.scanned);
}

INSTANTIATE_TEST_SUITE_P(
    XmlScanner, WellFormed,
    testing::Values(
        Document{"Plain", "<a><b x='1' y=\"2\">t</b><c/></a>", "<a><b x=1 y=2>t</><c></></>"},
        Document{
            "Prolog",
            "\xEF\xBB\xBF<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<!-- > < & -->\n<?p ?>\n<a/>\n<!---->\n",
            "<a></>"},
        Document{"References", "<a b='&lt;&#9;&quot;'>&amp;&gt;&apos;&#65;&#x1F600;</a>",
                 QString::fromUtf8("<a b=<\t\">&>'A\U0001F600</>")},
        Document{"CData", "<a>x<![CDATA[<b>&amp;]]]]>y</a>", "<a>x<b>&amp;]]y</>"},
        Document{"LineEnds", "<a b='1\r\n2\t3'>1\r\n2\r3\n</a>", "<a b=1 2 3>1\n2\n3\n</>"},
        Document{"GreaterInAttribute", "<a b='>' c=\"/>\"/>", "<a b=> c=/>></>"},
        Document{"BlanksInTags", "<a \n b = '1' ><c\t/></a >", "<a b=1><c></></>"},
        Document{"Umlauts", "<\xC3\xA4 \xC3\xB6='\xC3\xBC'>\xE2\x82\xAC</\xC3\xA4>",
                 QString::fromUtf8("<ä ö=ü>€</>")}),
    [](const auto& row) { return row.param.name; });

class Malformed : public testing::TestWithParam<Document> {};

TEST_P(Malformed, IsRefusedWithLineAndReason) {
    const Document& document = GetParam();
    for (const qint64 step : {1, 5, 1'000'000})
        EXPECT_EQ(Scan(document.bytes, step), QStringLiteral("!f:") + document.scanned)
            << "in steps of " << step;
}

INSTANTIATE_TEST_SUITE_P(
    XmlScanner, Malformed,
    testing::Values(
        Document{"Empty", "", "1: there is no XML element in the file"},
        Document{"Truncated", "<a>\n<b>\n", "3: the file ends within the element \"b\""},
        Document{"TruncatedTag", "<a>\n<b c='", "2: the file ends within markup"},
        Document{"WrongEnd", "<a>\n</b>", "2: the end tag \"b\" has no start tag"},
        Document{"SecondRoot", "<a/>\n<b/>", "2: there is a second root element \"b\""},
        Document{"Garbage", "hello", "1: this is not XML: there is text outside the root element"},
        Document{"Doctype", "<!DOCTYPE a [<!ENTITY e 'x'>]>\n<a>&e;</a>",
                 "1: document type declarations are not accepted"},
        Document{"UnknownEntity", "<a>&e;</a>", "1: the entity \"e\" is not known"},
        Document{"NulReference", "<a>&#0;</a>", "1: the reference \"#0\" is no character"},
        Document{"SurrogateReference", "<a>&#xD800;</a>", "1: the reference \"#xD800\" is no character"},
        Document{"ControlCharacter", QByteArray("<a>\n\x01</a>"), "1: there is a control character"},
        Document{"NotUtf8", "<a>\xC3(</a>", "1: this is not UTF-8 text"},
        Document{"OverlongUtf8", "<a>\xC0\xAF</a>", "1: this is not UTF-8 text"},
        Document{"Utf16", QByteArray("\xFF\xFE<\0a\0", 6), "1: this is not UTF-8 text"},
        Document{"OtherEncoding", "<?xml version='1.0' encoding='latin-9'?><a/>",
                 "1: the encoding \"latin-9\" is not supported, only UTF-8 is"},
        Document{"DoubleAttribute", "<a b='1' b='2'/>", "1: attribute \"b\" is given twice"},
        Document{"UnquotedAttribute", "<a b=1/>", "1: the value of attribute \"b\" is not quoted"},
        Document{"LessInAttribute", "<a b='<'/>", "1: there is a \"<\" within a tag"},
        Document{"DashesInComment", "<!-- -- --><a/>", "1: a comment contains \"--\""}),
    [](const auto& row) { return row.param.name; });

TEST(XmlScanner, RefusesMoreThan64Levels) {
    const auto nested = [](int depth) {
        return QByteArray("<a>").repeated(depth) + QByteArray("</a>").repeated(depth);
    };
    EXPECT_TRUE(Scan(nested(64)).startsWith(u'<'));
    EXPECT_EQ(Scan(nested(65)), QStringLiteral("!f:1: elements are nested more than 64 deep"));
}

TEST(XmlScanner, RefusesPiecesThatWouldFillTheMemory) {
    QByteArray endless(40 * 1024 * 1024, 'x');
    endless.prepend("<a>\n");
    EXPECT_EQ(Scan(endless), QStringLiteral("!f:1: one piece of text is larger than 16 MiB"));
}

// Damages a document at random places: both must refuse it, or read the same.
TEST(XmlScanner, AgreesWithExpatOnDamagedDocuments) {
    const QByteArray original = "<?xml version=\"1.0\"?><list a=\"1\" b='&lt;2'><!-- c --><e>7&amp;8</e><e/>"
                                "<f g='h'>i<![CDATA[j]]>k</f>\r\n<\xC3\xA4 l='\n'>&#65;</\xC3\xA4></list>";
    const QByteArray alphabet = "<>/&;'\"= !-[]?axe#\r\n\t\x01\xC3";
    QRandomGenerator random(20240531);
    int bothAccept = 0;
    for (int round = 0; round < 20'000; ++round) {
        QByteArray bytes = original;
        for (int n = random.bounded(1, 4); n > 0; --n) {
            const auto at = random.bounded(bytes.size());
            if (random.bounded(2) == 0)
                bytes.remove(at, 1);
            else
                bytes[at] = alphabet[random.bounded(alphabet.size())];
        }
        TricklingDevice device(bytes, random.bounded(1, 50));
        const XmlShape ours = ShapeByScanner(device);
        ASSERT_EQ(XmlDisagreement(ours, ShapeByExpat(bytes)), "") << bytes.constData();
        bothAccept += ours.refusal.empty() ? 1 : 0;
    }
    EXPECT_GT(bothAccept, 1000);
}

} // namespace
