#include "Platform/Linux/Tray/Title/FontFile.h"

#include "Platform/Linux/Tray/Title/Typeface.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <cmath>

namespace {

// FreeType counts in parts of a pixel.
constexpr double Unit = 64;
constexpr double LinearUnit = 65536;
// Letters are shifted by quarters of a pixel, and rather to the left.
constexpr double ShiftSteps = 4;
constexpr double ShiftTolerance = 0.1;

} // namespace

FontFile::FontFile(const Typeface &typeface, int pixelSize)
    : m_typeface(typeface)
    , m_pixelSize(pixelSize)
{
}

FontFile::~FontFile()
{
    FT_Done_FreeType(m_library); // and its face
}

double FontFile::advance(QChar character)
{
    if (!load(character))
        return 0;
    // Hinting that is slight leaves the widths alone.
    const bool isExact = (m_typeface.loadFlags & FT_LOAD_NO_HINTING) != 0
        || FT_LOAD_TARGET_MODE(m_typeface.loadFlags) == FT_RENDER_MODE_LIGHT;
    return isExact ? static_cast<double>(m_face->glyph->linearHoriAdvance) / LinearUnit
                   : static_cast<double>(m_face->glyph->advance.x) / Unit;
}

double FontFile::capHeight()
{
    return load(u'H') ? static_cast<double>(m_face->glyph->metrics.horiBearingY) / Unit : 0;
}

LetterMask FontFile::mask(QChar character, double shift)
{
    if (!load(character))
        return {};
    const double steps = std::floor(shift * ShiftSteps + ShiftTolerance);
    FT_Outline_Translate(&m_face->glyph->outline, std::lround(steps / ShiftSteps * Unit), 0);
    if (FT_Render_Glyph(m_face->glyph, FT_RENDER_MODE_NORMAL) != 0)
        return {};
    const FT_Bitmap &bitmap = m_face->glyph->bitmap;
    if (bitmap.rows == 0 || bitmap.pixel_mode != FT_PIXEL_MODE_GRAY)
        return {};
    QImage coverage(static_cast<int>(bitmap.width), static_cast<int>(bitmap.rows),
                    QImage::Format_Alpha8);
    for (int y = 0; y < coverage.height(); ++y)
        std::copy_n(bitmap.buffer + y * bitmap.pitch, bitmap.width, coverage.scanLine(y));
    return {coverage, QPoint(m_face->glyph->bitmap_left, -m_face->glyph->bitmap_top)};
}

bool FontFile::load(QChar character)
{
    if (!open() || FT_Load_Char(m_face, character.unicode(), m_typeface.loadFlags) != 0)
        return false;
    if (m_typeface.isEmboldened)
        FT_GlyphSlot_Embolden(m_face->glyph);
    return true;
}

bool FontFile::open()
{
    if (m_library != nullptr)
        return m_face != nullptr;
    if (FT_Init_FreeType(&m_library) != 0
        || FT_New_Face(m_library, m_typeface.file.constData(), m_typeface.index, &m_face) != 0)
        return false;
    FT_Set_Char_Size(m_face, std::lround(m_pixelSize * m_typeface.stretch * Unit),
                     std::lround(m_pixelSize * Unit), 0, 0);
    return true;
}
