#include "printerdocs/bbcode/gifcodes_p.h"

#include <array>

namespace gifcodes {

namespace {

constexpr int mostCodes = 4096;
constexpr int mostBits = 12;

/// The lengths of what codes stand for, without the pixels.
class Codes
{
public:
    explicit Codes(int pixelBits) : m_clear(1 << pixelBits), m_pixelBits(pixelBits)
    {
        m_lengths.fill(1);
        clear();
    }

    /// Adds eight bits. @return pixels of the codes that are complete now
    qint64 take(uchar byte)
    {
        qint64 pixels = 0;
        m_bits |= uint(byte) << m_count;
        m_count += 8;
        while (m_count >= m_size && !m_isAtEnd) {
            const int size = m_size;  // the code may change it
            pixels += pixelsOf(int(m_bits & ((1U << size) - 1)));
            m_bits >>= size;
            m_count -= size;
        }
        return pixels;
    }

    bool isAtEnd() const { return m_isAtEnd; }

private:
    void clear()
    {
        m_size = m_pixelBits + 1;
        m_next = m_clear + 2;
        m_last = 0;
    }

    int pixelsOf(int code)
    {
        m_isAtEnd = code == m_clear + 1;
        if (code == m_clear || m_isAtEnd) {
            clear();
            return 0;
        }
        const int length = code < m_next ? m_lengths[size_t(code)] : m_last + 1;
        if (m_last > 0 && m_next < mostCodes)
            m_lengths[size_t(m_next++)] = m_last + 1;
        if (m_next == 1 << m_size && m_size < mostBits)
            ++m_size;
        m_last = length;
        return length;
    }

    std::array<int, mostCodes> m_lengths;
    const int m_clear;  // the next one is the end
    const int m_pixelBits;
    int m_size = 0;  // bits of a code
    int m_next = 0;
    int m_last = 0;  // pixels of the code before; 0 for none
    uint m_bits = 0;
    int m_count = 0;
    bool m_isAtEnd = false;
};

uchar nextByte(QFile &file)
{
    char byte = 0;
    file.getChar(&byte);
    return uchar(byte);
}

void skipColours(QFile &file, uchar flags)
{
    if ((flags & 0x80) != 0)
        file.skip(qint64(3) << ((flags & 0x07) + 1));
}

/// Skips an extension as Qt does, which takes the first size of some for no end, even if it is 0.
void skipExtension(QFile &file)
{
    constexpr uchar control = 0xF9;
    constexpr uchar application = 0xFF;
    const uchar label = nextByte(file);
    if (label == control || label == application)
        file.skip(nextByte(file));
    while (const uchar size = nextByte(file))
        file.skip(size);
}

/// Goes to the pixels of the first picture. @return false if there is none
bool findPicture(QFile &file)
{
    constexpr int flagsOfFile = 10;
    constexpr int flagsOfPicture = 8;
    file.seek(flagsOfFile);
    const uchar flags = nextByte(file);
    file.skip(2);
    skipColours(file, flags);
    uchar kind = nextByte(file);
    for (; kind == '!'; kind = nextByte(file))
        skipExtension(file);
    file.skip(flagsOfPicture);
    skipColours(file, nextByte(file));
    return kind == ',';
}

}  // namespace

bool areLongerThan(QFile &file, qint64 limit)
{
    if (!findPicture(file))
        return false;
    const int pixelBits = nextByte(file);
    if (pixelBits >= mostBits)
        return false;
    Codes codes(pixelBits);
    qint64 pixels = 0;
    for (uchar size = nextByte(file); size > 0 && !codes.isAtEnd(); size = nextByte(file)) {
        const QByteArray block = file.read(size);
        for (const char byte : block)
            pixels += codes.take(uchar(byte));
        if (pixels > limit)
            return true;
    }
    return false;
}

}  // namespace gifcodes
