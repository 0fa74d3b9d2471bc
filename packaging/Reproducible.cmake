# Builds at another place or time give the same bits.
target_compile_options(MeterkinOptions INTERFACE
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}=. -ffile-prefix-map=${CMAKE_BINARY_DIR}=.)

# The view compiler declares a function's registers in the order of their types' addresses.
get_target_property(location Qt6::qmlcachegen LOCATION)
file(CONFIGURE OUTPUT qmlcachegen @ONLY CONTENT [[#!/bin/sh
set -e
"@location@" "$@"
while [ $# -gt 1 ] && [ "$1" != -o ]; do
    shift
done
awk '
    function flush(   i, j, line) {
        for (i = 1; i < count; ++i) {
            line = held[i]
            for (j = i; j > 0 && held[j - 1] > line; --j)
                held[j] = held[j - 1]
            held[j] = line
        }
        for (i = 0; i < count; ++i)
            print held[i]
        count = 0
    }
    /^[A-Za-z][^=(]* \*?r[0-9]+_[0-9]+;$/ { held[count++] = $0; next }
    { flush(); print }
    END { flush() }' "$2" > "$2.sorted"
mv "$2.sorted" "$2"
]])
file(CHMOD ${CMAKE_CURRENT_BINARY_DIR}/qmlcachegen
    PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
get_target_property(configurations Qt6::qmlcachegen IMPORTED_CONFIGURATIONS)
foreach(configuration IN LISTS configurations)
    set_target_properties(Qt6::qmlcachegen PROPERTIES
        IMPORTED_LOCATION_${configuration} ${CMAKE_CURRENT_BINARY_DIR}/qmlcachegen)
endforeach()
