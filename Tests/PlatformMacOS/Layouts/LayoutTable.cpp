// Prints a C++ file that compiles where the headers of the system agree with those of the fakes.

#include "Platform/FanControllerConnection.h"

#include <Carbon/Carbon.h>
#include <mach/mach.h>

#include <cstddef>
#include <cstdio>
#include <type_traits>

namespace {

struct Layout {
    const char *expression;
    long long value;
};

constexpr Layout Layouts[]{
#define LAYOUT(expression) {#expression, static_cast<long long>(expression)},
#include "Layouts.def"
};

} // namespace

int main()
{
    std::puts("#include \"Platform/FanControllerConnection.h\"\n\n#include <Carbon/Carbon.h>\n"
              "#include <mach/mach.h>\n\n#include <cstddef>\n#include <type_traits>\n");
    for (const Layout &layout : Layouts)
        std::printf("static_assert(static_cast<long long>(%s) == %lld);\n", layout.expression,
                    layout.value);
}
