# One set of warnings for all targets; the dev preset turns them into errors.
add_library(td_warnings INTERFACE)
target_compile_options(td_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wcast-qual -Wformat=2 -Wimplicit-fallthrough)
if(TD_STRICT)
    target_compile_options(td_warnings INTERFACE -Werror)
endif()
