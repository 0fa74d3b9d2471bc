# What Debian builds its packages with. Flags from outside come first: they may ask for more.
option(METERKIN_HARDENING "Build with stack protector, checked library calls and bind now" ON)
if(METERKIN_HARDENING AND NOT METERKIN_SANITIZE)
    target_compile_options(MeterkinOptions INTERFACE
        -fstack-protector-strong -Wformat -Werror=format-security)
    if(NOT CMAKE_CXX_FLAGS MATCHES "FORTIFY_SOURCE")
        # It needs an optimising build.
        target_compile_definitions(MeterkinOptions INTERFACE
            $<$<NOT:$<CONFIG:Debug,>>:_FORTIFY_SOURCE=2>)
    endif()
    add_link_options(LINKER:-z,relro LINKER:-z,now)
endif()
