// The data library of ICU without any data, which is a third of an AppDir: Qt asks ICU for
// encodings and sort orders, and we use neither. ICU_DATA is the name that the present version
// looks for.
#include <bit>
#include <cstdint>

// The package format of ICU's data files ("CmnD", version 1): a header, then a table of contents.
extern "C" const struct alignas(16) {
    std::uint16_t headerSize = 32;
    std::uint8_t magic[2] = {0xda, 0x27};
    std::uint16_t informationSize = 20;
    std::uint16_t reserved = 0;
    std::uint8_t isBigEndian = std::endian::native == std::endian::big;
    std::uint8_t charsetFamily = 0; // ASCII
    std::uint8_t characterSize = 2;
    std::uint8_t reservedToo = 0;
    std::uint8_t format[4] = {'C', 'm', 'n', 'D'};
    std::uint8_t formatVersion[4] = {1, 0, 0, 0};
    std::uint8_t dataVersion[4] = {};
    std::uint8_t padding[8] = {};
    std::uint32_t entryCount = 0;
} ICU_DATA = {};
