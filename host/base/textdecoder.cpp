#include "host/base/textdecoder.h"

#include "host/base/longwork.h"

#include <QCoreApplication>

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace {

constexpr qint64 HeadBytes = 64 * 1024;
constexpr qint64 BlockBytes = 256 * 1024;

struct Mark {
    std::string_view bytes;
    TextEncoding encoding;
};

using namespace std::string_view_literals;
/// The longer ones come first: one begins with another.
constexpr Mark Marks[] = {
    {"\xFF\xFE\0\0"sv, TextEncoding::Utf32LE}, {"\0\0\xFE\xFF"sv, TextEncoding::Utf32BE},
    {"\xEF\xBB\xBF"sv, TextEncoding::Utf8},    {"\xFF\xFE"sv, TextEncoding::Utf16LE},
    {"\xFE\xFF"sv, TextEncoding::Utf16BE},
};

/// The characters of Windows-1252 from 0x80 to 0x9F; five bytes stand for none.
constexpr std::array<char16_t, 32> Windows1252 = {
    0x20AC, 0xFFFD, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0xFFFD, 0x017D, 0xFFFD, 0xFFFD, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0xFFFD, 0x017E, 0x0178};

QStringConverter::Encoding converterOf(TextEncoding encoding) {
    switch (encoding) {
    case TextEncoding::Utf16LE:
        return QStringConverter::Utf16LE;
    case TextEncoding::Utf16BE:
        return QStringConverter::Utf16BE;
    case TextEncoding::Utf32LE:
        return QStringConverter::Utf32LE;
    case TextEncoding::Utf32BE:
        return QStringConverter::Utf32BE;
    case TextEncoding::Utf8:
    case TextEncoding::Windows1252:
        break;
    }
    return QStringConverter::Utf8;
}

std::string_view viewOf(const QByteArray& bytes) {
    return {bytes.constData(), static_cast<std::size_t>(bytes.size())};
}

void takeMark(std::string_view head, TextForm& form) {
    const auto* const mark =
        std::ranges::find_if(Marks, [&](const Mark& known) { return head.starts_with(known.bytes); });
    if (mark == std::end(Marks))
        return;
    form.encoding = mark->encoding;
    for (; head.starts_with(mark->bytes); head.remove_prefix(mark->bytes.size()))
        form.markSize += static_cast<qint64>(mark->bytes.size());
}

/// Fields of numbers make at least a third of the characters of such a file ASCII, of which every other byte
/// is zero.
bool isUtf16(std::string_view head, TextEncoding& encoding) {
    std::array<std::size_t, 2> zeros{};
    for (std::size_t i = 0; i < head.size(); ++i)
        zeros[i % 2] += head[i] == '\0' ? 1 : 0;
    const auto [even, odd] = zeros;
    const std::size_t many = std::max(even, odd);
    if (many * 6 < head.size() || many < 2 || std::min(even, odd) * 8 > many)
        return false;
    encoding = odd > even ? TextEncoding::Utf16LE : TextEncoding::Utf16BE;
    return true;
}

/// What a pass over a file without a mark finds, as offsets from its beginning; negative for nothing.
struct Pass {
    qint64 foreign = -1; ///< first byte that is not UTF-8
    qint64 zero = -1;    ///< first zero byte
};

Pass passOver(QIODevice& device) {
    Pass pass;
    QByteArray block;
    block.reserve(BlockBytes + 4);
    qint64 offset = 0; ///< of the block
    for (;;) {
        const qsizetype carried = block.size();
        block.resize(carried + BlockBytes);
        const qint64 count = std::max<qint64>(device.read(block.data() + carried, BlockBytes), 0);
        LongWork::Step(device.pos(), device.size());
        block.resize(carried + count);
        const auto* const zero = static_cast<const char*>(
            std::memchr(block.constData(), 0, static_cast<std::size_t>(block.size())));
        if (zero)
            pass.zero = offset + (zero - block.constData());
        if (zero)
            return pass;
        qsizetype good = block.size();
        if (pass.foreign < 0) {
            good = static_cast<qsizetype>(Utf8Length(viewOf(block)));
            const std::string_view rest = viewOf(block).substr(static_cast<std::size_t>(good));
            if (!rest.empty() && !BeginsCharacter(rest)) {
                pass.foreign = offset + good;
                good = block.size();
            }
        }
        if (count == 0)
            return pass; // a character that the file's end cuts is no sign of another encoding
        offset += good;
        block.remove(0, good);
    }
}

/// Line of the byte at an offset, from 1.
qint64 lineAt(QIODevice& device, qint64 begin, qint64 offset) {
    device.seek(begin);
    qint64 ends = 0;
    char before = 0;
    for (qint64 left = offset; left > 0;) {
        const QByteArray block = device.read(std::min(left, BlockBytes));
        if (block.isEmpty())
            break;
        for (const char c : block) {
            ends += c == '\r' || (c == '\n' && before != '\r') ? 1 : 0;
            before = c;
        }
        left -= block.size();
    }
    return 1 + ends;
}

/// Finds the encoding of a file without a mark, or that it is no text.
void lookAtAll(QIODevice& device, qint64 begin, TextForm& form) {
    const Pass pass = passOver(device);
    if (pass.zero >= 0) {
        form.refusalLine = lineAt(device, begin, pass.zero);
        form.refusal = QCoreApplication::translate("Readers", "is no text file: it holds zero bytes");
    } else if (pass.foreign >= 0) {
        form.encoding = TextEncoding::Windows1252;
        form.foreignLine = lineAt(device, begin, pass.foreign);
    }
}

/// A text has hardly any control characters and hardly any that are badly encoded. One with a mark says
/// itself that it is text. Writers put U+FFFD where a character has no place: that is no bad encoding.
void lookAtHead(const QByteArray& head, TextForm& form) {
    constexpr qsizetype Few = 8;
    constexpr qsizetype LeastShare = 10;
    const std::string_view rest = viewOf(head).substr(Utf8Length(viewOf(head)));
    const bool isWellFormed = form.encoding == TextEncoding::Utf8 && (rest.empty() || BeginsCharacter(rest));
    const auto isStrange = [&](QChar c) {
        constexpr char16_t RubOut = 0x7F; // which writers keep
        return (IsStrayControl(c) && c != RubOut) || (c == QChar::ReplacementCharacter && !isWellFormed);
    };
    const qsizetype strange = std::count_if(form.head.cbegin(), form.head.cend(), isStrange);
    if (form.markSize > 0 || !form.refusal.isEmpty() || strange <= Few ||
        strange * LeastShare < form.head.size())
        return;
    const auto first = std::find_if(form.head.cbegin(), form.head.cend(), isStrange);
    form.refusalLine = 1 + CountLineEnds({form.head.cbegin(), first});
    form.refusal =
        QCoreApplication::translate("Readers", "is no text file: it is full of control characters");
}

} // namespace

QString TextForm::Remark() const {
    return foreignLine > 0 ? QCoreApplication::translate(
                                 "Readers", "is not UTF-8 from here on; all is read as Windows-1252")
                           : QString();
}

TextForm LookAtText(QIODevice& device) {
    TextForm form;
    const qint64 begin = device.pos();
    QByteArray head = device.isSequential() ? device.peek(HeadBytes) : device.read(HeadBytes);
    takeMark(viewOf(head), form);
    if (form.markSize == 0 && !isUtf16(viewOf(head), form.encoding) && !device.isSequential() &&
        device.seek(begin))
        lookAtAll(device, begin, form);
    head.remove(0, form.markSize);
    TextDecoder(form.encoding).Append(form.head, head);
    lookAtHead(head, form);
    if (device.isSequential())
        device.skip(form.markSize);
    else
        device.seek(begin + form.markSize);
    return form;
}

std::size_t Utf8Length(std::string_view bytes) {
    std::size_t i = 0;
    while (i < bytes.size()) {
        // Most text is ASCII, eight bytes of which are known at once.
        constexpr std::uint64_t NotAscii = 0x8080808080808080;
        for (std::uint64_t eight = 0; bytes.size() - i >= sizeof eight; i += sizeof eight) {
            std::memcpy(&eight, bytes.data() + i, sizeof eight);
            if ((eight & NotAscii) != 0)
                break;
        }
        if (i == bytes.size())
            break;
        const auto lead = static_cast<unsigned char>(bytes[i]);
        if (lead < 0x80) {
            ++i;
            continue;
        }
        const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
        if (lead < 0xC2 || lead > 0xF4 || bytes.size() - i < length)
            return i;
        char32_t codePoint = lead & (0x7Fu >> length);
        for (std::size_t k = 1; k < length; ++k) {
            const auto next = static_cast<unsigned char>(bytes[i + k]);
            if ((next & 0xC0) != 0x80)
                return i;
            codePoint = codePoint << 6 | (next & 0x3F);
        }
        constexpr std::array<char32_t, 5> Least{0, 0, 0x80, 0x800, 0x10000};
        if (codePoint < Least[length] || codePoint > 0x10FFFF || (codePoint >= 0xD800 && codePoint < 0xE000))
            return i;
        i += length;
    }
    return i;
}

bool BeginsCharacter(std::string_view bytes) {
    const auto lead = static_cast<unsigned char>(bytes.front());
    const std::size_t length = lead >= 0xF0 ? 4 : lead >= 0xE0 ? 3 : 2;
    return lead >= 0xC2 && lead <= 0xF4 && bytes.size() < length &&
           std::ranges::all_of(bytes.substr(1), [](char c) { return (c & 0xC0) == 0x80; });
}

void AppendControls(QStringView text, qsizetype from, std::vector<quint32>& places) {
    const char16_t* const chars = text.utf16();
    const auto size = static_cast<quint32>(text.size());
    auto at = static_cast<quint32>(from);
#ifdef __SSE2__
    // Sixteen characters at once, of which mostly none or one is a control character.
    const __m128i lastControl = _mm_set1_epi16(0x1F);
    const __m128i rubOut = _mm_set1_epi16(0x7F);
    const auto controlsOf = [&](const char16_t* eight) {
        const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(eight));
        return _mm_or_si128(_mm_cmpeq_epi16(_mm_subs_epu16(block, lastControl), _mm_setzero_si128()),
                            _mm_cmpeq_epi16(block, rubOut));
    };
    for (; at + 16 <= size; at += 16) {
        const __m128i both = _mm_packs_epi16(controlsOf(chars + at), controlsOf(chars + at + 8));
        for (auto bits = static_cast<unsigned>(_mm_movemask_epi8(both)); bits != 0; bits &= bits - 1)
            places.push_back(at + static_cast<quint32>(std::countr_zero(bits)));
    }
#endif
    for (; at < size; ++at) {
        if (chars[at] < 0x20 || chars[at] == 0x7F)
            places.push_back(at);
    }
}

qint64 CountLineEnds(QStringView text) {
    qint64 ends = text.count(QLatin1Char('\n'));
    for (qsizetype at = text.indexOf(QLatin1Char('\r')); at >= 0;
         at = text.indexOf(QLatin1Char('\r'), at + 1))
        ends += at + 1 == text.size() || text[at + 1] != QLatin1Char('\n') ? 1 : 0;
    return ends;
}

TextDecoder::TextDecoder(TextEncoding encoding) {
    if (encoding != TextEncoding::Windows1252)
        m_decoder.emplace(converterOf(encoding));
}

void TextDecoder::Append(QString& text, const QByteArray& bytes) {
    const qsizetype known = text.size();
    if (m_decoder) {
        const qsizetype most = known + m_decoder->requiredSpace(bytes.size());
        if (text.capacity() < most)
            text.reserve(most); // exactly: there may be little memory left
        text.resize(most);
        const QChar* const end = m_decoder->appendToBuffer(text.data() + known, bytes);
        text.resize(end - text.constData());
        return;
    }
    text.resize(known + bytes.size());
    std::transform(bytes.cbegin(), bytes.cend(), text.begin() + known, [](char byte) {
        const auto code = static_cast<unsigned char>(byte);
        return QChar(code >= 0x80 && code < 0xA0 ? Windows1252[code - 0x80u] : char16_t(code));
    });
}

Utf8Device::Utf8Device(QIODevice& source, TextEncoding encoding) : m_source(source), m_decoder(encoding) {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 Utf8Device::readData(char* data, qint64 size) {
    while (m_position == m_bytes.size()) {
        const QByteArray bytes = m_source.read(BlockBytes);
        LongWork::Step(m_source.pos(), m_source.size());
        if (bytes.isEmpty())
            return 0;
        QString text;
        m_decoder.Append(text, bytes);
        m_bytes = text.toUtf8();
        m_position = 0;
    }
    const qint64 count = std::min<qint64>(size, m_bytes.size() - m_position);
    std::copy_n(m_bytes.constData() + m_position, count, data);
    m_position += count;
    return count;
}
