#include "raster/Canvas"

#include <gdal_priv.h>

#include <cstdint>
#include <iterator>

#include "raster/Failure"
#include "raster/GdalErrors"

namespace tools {

namespace {

// The letters from blank to tilde on a grid of 5 by 7 points: seven rows of two hexadecimal digits
// from top to bottom, the leftmost point as the highest of five bits.
constexpr std::uint64_t kLetters[] = {
    /*  !"#$ */ 0x00000000000000, 0x04040404000004, 0x0A0A0A00000000, 0x0A0A1F0A1F0A0A, 0x040F140E051E04,
    /* %&'() */ 0x18190204081303, 0x0C12140815120D, 0x04040800000000, 0x02040808080402, 0x08040202020408,
    /* *+,-. */ 0x0004150E150400, 0x0004041F040400, 0x000000000C0408, 0x0000001F000000, 0x00000000000C0C,
    /* /0123 */ 0x00010204081000, 0x0E11131519110E, 0x040C040404040E, 0x0E11010204081F, 0x1F02040201110E,
    /* 45678 */ 0x02060A121F0202, 0x1F101E0101110E, 0x0608101E11110E, 0x1F010204080808, 0x0E11110E11110E,
    /* 9:;<= */ 0x0E11110F01020C, 0x000C0C000C0C00, 0x000C0C000C0408, 0x02040810080402, 0x00001F001F0000,
    /* >?@AB */ 0x08040201020408, 0x0E110102040004, 0x0E11010D15150E, 0x0E1111111F1111, 0x1E11111E11111E,
    /* CDEFG */ 0x0E11101010110E, 0x1C12111111121C, 0x1F10101E10101F, 0x1F10101E101010, 0x0E11101711110F,
    /* HIJKL */ 0x1111111F111111, 0x0E04040404040E, 0x0702020202120C, 0x11121418141211, 0x1010101010101F,
    /* MNOPQ */ 0x111B1515111111, 0x11111915131111, 0x0E11111111110E, 0x1E11111E101010, 0x0E11111115120D,
    /* RSTUV */ 0x1E11111E141211, 0x0F10100E01011E, 0x1F040404040404, 0x1111111111110E, 0x11111111110A04,
    /* WXYZ[ */ 0x1111111515150A, 0x11110A040A1111, 0x1111110A040404, 0x1F01020408101F, 0x0E08080808080E,
    /* \]^_` */ 0x00100804020100, 0x0E02020202020E, 0x040A1100000000, 0x0000000000001F, 0x08040200000000,
    /* abcde */ 0x00000E010F110F, 0x1010161911111E, 0x00000E1010110E, 0x01010D1311110F, 0x00000E111F100E,
    /* fghij */ 0x0609081C080808, 0x000F11110F010E, 0x10101619111111, 0x04000C0404040E, 0x0200060202120C,
    /* klmno */ 0x10101214181412, 0x0C04040404040E, 0x00001A15151111, 0x00001619111111, 0x00000E1111110E,
    /* pqrst */ 0x00001E111E1010, 0x00000D130F0101, 0x00001619101010, 0x00000E100E011E, 0x08081C08080906,
    /* uvwxy */ 0x0000111111130D, 0x00001111110A04, 0x0000111115150A, 0x0000110A040A11, 0x000011110F010E,
    /* z{|}~ */ 0x00001F0204081F, 0x02040408040402, 0x04040404040404, 0x08040402040408, 0x00000815020000,
};
static_assert(std::size(kLetters) == '~' - ' ' + 1, "one form for each letter");

constexpr int kScale = 2;
constexpr int kChannels = 4;

}  // namespace

Canvas::Canvas(int width, int height) : m_width(width), m_height(height), m_pixels(offset(0, height)) {}

std::size_t Canvas::offset(int x, int y) const
{
    return (static_cast<std::size_t>(y) * static_cast<std::size_t>(m_width) + static_cast<std::size_t>(x)) * kChannels;
}

void Canvas::set(int x, int y, Colour colour)
{
    if (x < 0 || x >= m_width || y < 0 || y >= m_height) {
        return;
    }
    unsigned char* pixel = &m_pixels[offset(x, y)];
    pixel[0] = colour.red;
    pixel[1] = colour.green;
    pixel[2] = colour.blue;
    pixel[3] = 255;
}

void Canvas::blend(int x, int y, Colour colour, double opacity)
{
    const unsigned char* below = &m_pixels[offset(x, y)];
    const bool bare = below[3] == 0;
    const auto mix = [&](unsigned char under, unsigned char over) {
        return bare ? over : static_cast<unsigned char>(under + opacity * (over - under) + 0.5);
    };
    set(x, y, {mix(below[0], colour.red), mix(below[1], colour.green), mix(below[2], colour.blue)});
    if (bare) {
        m_pixels[offset(x, y) + 3] = static_cast<unsigned char>(opacity * 255 + 0.5);
    }
}

void Canvas::fill(int x, int y, int width, int height, Colour colour)
{
    for (int row = y; row < y + height; ++row) {
        for (int column = x; column < x + width; ++column) {
            set(column, row, colour);
        }
    }
}

void Canvas::write(int x, int y, const std::string& text, Colour colour)
{
    for (const char letter : text) {
        drawLetter(x, y, letter, colour);
        x += kLetterWidth;
    }
}

void Canvas::drawLetter(int x, int y, char letter, Colour colour)
{
    const std::uint64_t form = kLetters[(letter >= ' ' && letter <= '~' ? letter : '?') - ' '];
    for (int row = 0; row < 7; ++row) {
        for (int column = 0; column < 5; ++column) {
            if (form >> (8 * (6 - row) + 4 - column) & 1) {
                fill(x + column * kScale, y + row * kScale, kScale, kScale, colour);
            }
        }
    }
}

void Canvas::savePng(const std::string& path, const std::string& name) const
{
    const GdalErrors errors;
    GDALDriver* memory = GetGDALDriverManager()->GetDriverByName("MEM");
    GDALDriver* png = GetGDALDriverManager()->GetDriverByName("PNG");
    if (!memory || !png) {
        throw Failure("Cannot write '" + name + "': this GDAL has no driver for PNG.");
    }
    const GDALDatasetUniquePtr picture(memory->Create("", m_width, m_height, kChannels, GDT_Byte, nullptr));
    std::vector<unsigned char> pixels = m_pixels;
    bool written =
        picture && picture->RasterIO(GF_Write, 0, 0, m_width, m_height, pixels.data(), m_width, m_height, GDT_Byte,
                                     kChannels, nullptr, kChannels, m_width * kChannels, 1, nullptr) == CE_None;
    written = written && GDALDatasetUniquePtr(
                             png->CreateCopy(path.c_str(), picture.get(), false, nullptr, nullptr, nullptr)) != nullptr;
    if (!written || errors.any()) {
        throw Failure("Cannot write '" + name + "': " + errors.text());
    }
}

}  // namespace tools
