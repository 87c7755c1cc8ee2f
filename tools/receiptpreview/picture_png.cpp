#include <png.h>

#include <array>
#include <csetjmp>

#include "picture.h"
#include "rastercanvas.h"

namespace receiptpreview {

namespace {

constexpr int bandDots = 256;
constexpr int bitsPerSample = 8;
constexpr double metresPerInch = 0.0254;

// The palette: greys of the text's edges from black to white, then the other inks.
constexpr int greys = 254;
constexpr int noteIndex = greys;
constexpr int guideIndex = greys + 1;
constexpr int paletteSize = greys + 2;

std::array<png_color, paletteSize> palette()
{
    std::array<png_color, paletteSize> colours{};
    const auto colour = [](int red, int green, int blue) {
        return png_color{static_cast<png_byte>(red), static_cast<png_byte>(green),
                         static_cast<png_byte>(blue)};
    };
    for (int i = 0; i < greys; ++i) {
        const int level = i * 255 / (greys - 1);
        colours.at(static_cast<std::size_t>(i)) = colour(level, level, level);
    }
    const QRgb note = colourOf(Ink::Note);
    const QRgb guide = colourOf(Ink::Guide);
    colours.at(noteIndex) = colour(qRed(note), qGreen(note), qBlue(note));
    colours.at(guideIndex) = colour(qRed(guide), qGreen(guide), qBlue(guide));
    return colours;
}

png_byte indexOf(QRgb pixel)
{
    if ((pixel & 0xFFFFFF) == colourOf(Ink::Note))
        return noteIndex;
    if ((pixel & 0xFFFFFF) == colourOf(Ink::Guide))
        return guideIndex;
    return static_cast<png_byte>(qGray(pixel) * (greys - 1) / 255);
}

/// libpng's writer on a device. Each call gives false on failure; libpng leaves it by longjmp, so
/// nothing in them has a destructor.
class PngWriter
{
public:
    explicit PngWriter(QIODevice &device)
        : m_device(device),
          m_png(png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, fail, ignore))
    {
        if (m_png != nullptr)
            m_info = png_create_info_struct(m_png);
    }
    ~PngWriter() { png_destroy_write_struct(&m_png, &m_info); }
    PngWriter(const PngWriter &) = delete;
    PngWriter &operator=(const PngWriter &) = delete;

    bool begin(png_uint_32 width, png_uint_32 height, png_uint_32 dotsPerMetre)
    {
        static const std::array<png_color, paletteSize> colours = palette();
        if (m_info == nullptr || setjmp(png_jmpbuf(m_png)) != 0)
            return false;
        png_set_write_fn(m_png, this, write, nullptr);
        png_set_IHDR(m_png, m_info, width, height, bitsPerSample, PNG_COLOR_TYPE_PALETTE,
                     PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_set_PLTE(m_png, m_info, colours.data(), paletteSize);
        png_set_pHYs(m_png, m_info, dotsPerMetre, dotsPerMetre, PNG_RESOLUTION_METER);
        png_write_info(m_png, m_info);
        return m_good;
    }

    bool row(const png_byte *bytes)
    {
        if (setjmp(png_jmpbuf(m_png)) != 0)
            return false;
        png_write_row(m_png, bytes);
        return m_good;
    }

    bool end()
    {
        if (setjmp(png_jmpbuf(m_png)) != 0)
            return false;
        png_write_end(m_png, m_info);
        return m_good;
    }

private:
    static void fail(png_structp png, png_const_charp) { png_longjmp(png, 1); }
    static void ignore(png_structp, png_const_charp) {}
    static void write(png_structp png, png_bytep bytes, png_size_t count)
    {
        auto *writer = static_cast<PngWriter *>(png_get_io_ptr(png));
        const auto size = static_cast<qint64>(count);
        if (writer->m_device.write(reinterpret_cast<const char *>(bytes), size) != size)
            writer->m_good = false;
    }

    QIODevice &m_device;
    png_structp m_png;
    png_infop m_info = nullptr;
    bool m_good = true;
};

bool writeBand(const QImage &band, PngWriter &writer)
{
    std::vector<png_byte> row(static_cast<std::size_t>(band.width()));
    for (int y = 0; y < band.height(); ++y) {
        const auto *pixels = reinterpret_cast<const QRgb *>(band.constScanLine(y));
        std::transform(pixels, pixels + band.width(), row.begin(), indexOf);
        if (!writer.row(row.data()))
            return false;
    }
    return true;
}

bool writeBands(const Layout &layout, const Typeface &typeface, int scale, PngWriter &writer,
                const Progress &progress)
{
    const QSize size = layout.size();
    GlyphImages glyphs(typeface, scale);
    for (int top = 0; top < size.height(); top += bandDots) {
        const int height = qMin(bandDots, size.height() - top);
        QImage band(size.width() * scale, height * scale, QImage::Format_RGB32);
        if (band.isNull())
            return false;
        band.fill(Qt::white);
        {
            RasterCanvas canvas(band, top, scale, glyphs);
            paint(layout, top, top + height, canvas);
        }
        if (!writeBand(band, writer))
            return false;
        progress(top + height, size.height());
    }
    return true;
}

}  // namespace

bool writePng(const Layout &layout, const Typeface &typeface, int scale, QIODevice &device,
              const Progress &progress, QString *error)
{
    const QSize size = layout.size() * scale;
    if (size.height() > tallestPng) {
        *error = QStringLiteral(
                     "a PNG is %1 pixels high at most, and this would have %2; "
                     "use a smaller scale, PDF or SVG")
                     .arg(tallestPng)
                     .arg(size.height());
        return false;
    }
    const double dotsPerMetre = layout.paper().dotsPerInch() * scale / metresPerInch;
    PngWriter writer(device);
    if (writer.begin(static_cast<png_uint_32>(size.width()),
                     static_cast<png_uint_32>(size.height()),
                     static_cast<png_uint_32>(qRound(dotsPerMetre))) &&
        writeBands(layout, typeface, scale, writer, progress) && writer.end())
        return true;
    *error = device.errorString();
    return false;
}

}  // namespace receiptpreview
