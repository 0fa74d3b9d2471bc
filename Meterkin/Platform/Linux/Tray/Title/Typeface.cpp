#include "Platform/Linux/Tray/Title/Typeface.h"

#include "Platform/Log.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>

namespace {

constexpr int SquareWidth = 80; // percent of the normal width

struct Destroy {
    void operator()(FcConfig *config) const { FcConfigDestroy(config); }
    void operator()(FcPattern *pattern) const { FcPatternDestroy(pattern); }
};
using Config = std::unique_ptr<FcConfig, Destroy>;
using Pattern = std::unique_ptr<FcPattern, Destroy>;

int integer(const Pattern &pattern, const char *object, int otherwise)
{
    int value = 0;
    return FcPatternGetInteger(pattern.get(), object, 0, &value) == FcResultMatch ? value
                                                                                  : otherwise;
}

bool boolean(const Pattern &pattern, const char *object, bool otherwise)
{
    FcBool value = FcFalse;
    return FcPatternGetBool(pattern.get(), object, 0, &value) == FcResultMatch ? value != FcFalse
                                                                               : otherwise;
}

int loadFlags(const Pattern &font)
{
    const int style = integer(font, FC_HINT_STYLE, FC_HINT_SLIGHT);
    if (style == FC_HINT_NONE || !boolean(font, FC_HINTING, true))
        return FT_LOAD_NO_BITMAP | FT_LOAD_NO_HINTING;
    const int target = style == FC_HINT_SLIGHT ? FT_LOAD_TARGET_LIGHT : FT_LOAD_TARGET_NORMAL;
    const bool isAutomatic = boolean(font, FC_AUTOHINT, false);
    return FT_LOAD_NO_BITMAP | target | (isAutomatic ? FT_LOAD_FORCE_AUTOHINT : 0);
}

Typeface find(const Config &config, int weight, int width)
{
    const Pattern wish(FcPatternBuild(nullptr, FC_FAMILY, FcTypeString, "sans-serif", FC_WEIGHT,
                                      FcTypeInteger, weight, FC_WIDTH, FcTypeInteger, width,
                                      FC_SCALABLE, FcTypeBool, FcTrue, nullptr));
    FcConfigSubstitute(config.get(), wish.get(), FcMatchPattern);
    FcDefaultSubstitute(wish.get());
    FcResult result = FcResultNoMatch;
    const Pattern font(FcFontMatch(config.get(), wish.get(), &result));
    FcChar8 *file = nullptr;
    if (!font || FcPatternGetString(font.get(), FC_FILE, 0, &file) != FcResultMatch)
        return {};
    return {.file = reinterpret_cast<const char *>(file),
            .index = integer(font, FC_INDEX, 0),
            .loadFlags = loadFlags(font),
            .stretch = static_cast<double>(width) / integer(font, FC_WIDTH, FC_WIDTH_NORMAL),
            .isEmboldened = boolean(font, FC_EMBOLDEN, false)};
}

} // namespace

TitleTypefaces findTitleTypefaces()
{
    // Not the one that Qt uses, which stays once it was read.
    const Config config(FcInitLoadConfigAndFonts());
    TitleTypefaces found{.line = find(config, FC_WEIGHT_MEDIUM, FC_WIDTH_NORMAL),
                         .square = find(config, FC_WEIGHT_DEMIBOLD, SquareWidth)};
    if (found.line.file.isEmpty())
        qCWarning(logTray, "fontconfig knows no font: the title is blank");
    return found;
}
