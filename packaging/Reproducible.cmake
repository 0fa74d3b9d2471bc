# Builds at another place or time give the same bits.
target_compile_options(MeterkinOptions INTERFACE
    -ffile-prefix-map=${CMAKE_SOURCE_DIR}=. -ffile-prefix-map=${CMAKE_BINARY_DIR}=.)

# The view compiler writes some lines in the order of addresses and of Qt's hashes.
find_program(SETARCH setarch)
if(SETARCH)
    get_target_property(location Qt6::qmlcachegen LOCATION)
    file(CONFIGURE OUTPUT qmlcachegen CONTENT [[#!/bin/sh
export QT_HASH_SEED=0
# Where the system forbids it, the order may differ.
"@SETARCH@" --addr-no-randomize true 2> /dev/null || exec "@location@" "$@"
exec "@SETARCH@" --addr-no-randomize "@location@" "$@"
]] @ONLY)
    file(CHMOD ${CMAKE_CURRENT_BINARY_DIR}/qmlcachegen
        PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE)
    get_target_property(configurations Qt6::qmlcachegen IMPORTED_CONFIGURATIONS)
    foreach(configuration IN LISTS configurations)
        set_target_properties(Qt6::qmlcachegen PROPERTIES
            IMPORTED_LOCATION_${configuration} ${CMAKE_CURRENT_BINARY_DIR}/qmlcachegen)
    endforeach()
endif()
