#include "Platform/Linux/DiskImages/MountTable.h"

#include "Platform/Linux/Sensors/NumberText.h"

#include <algorithm>
#include <array>
#include <optional>

namespace {

// The columns that are used here.
enum Column { Device = 2, Root, Point, ColumnCount };

std::string_view takeField(std::string_view &line)
{
    const std::string_view field = line.substr(0, line.find(' '));
    line.remove_prefix(std::min(field.size() + 1, line.size()));
    return field;
}

bool isOctal(char c)
{
    return c >= '0' && c <= '7';
}

/// Spaces, tabs, line feeds and backslashes are written in octal, as "\040".
std::string unescaped(std::string_view field)
{
    std::string text;
    text.reserve(field.size());
    for (std::size_t i = 0; i < field.size(); ++i) {
        if (field[i] == '\\' && i + 3 < field.size() && isOctal(field[i + 1])
            && isOctal(field[i + 2]) && isOctal(field[i + 3])) {
            text += static_cast<char>((field[i + 1] - '0') * 64 + (field[i + 2] - '0') * 8
                                      + (field[i + 3] - '0'));
            i += 3;
        } else {
            text += field[i];
        }
    }
    return text;
}

} // namespace

std::vector<Mount> mountsIn(std::string_view text)
{
    struct Line {
        Mount mount;
        bool isWhole;
    };
    std::vector<Line> lines;
    while (std::optional<std::string_view> line = takeLine(text)) {
        std::array<std::string_view, ColumnCount> fields;
        for (std::string_view &field : fields)
            field = takeField(*line);
        if (!fields[Point].starts_with('/'))
            continue;
        lines.push_back(
            {{std::string(fields[Device]), unescaped(fields[Point])}, fields[Root] == "/"});
    }

    std::vector<Mount> mounts;
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        const bool isCovered = std::any_of(line + 1, lines.end(), [&](const Line &later) {
            return later.mount.point == line->mount.point;
        });
        if (line->isWhole && !isCovered)
            mounts.push_back(line->mount);
    }
    return mounts;
}
