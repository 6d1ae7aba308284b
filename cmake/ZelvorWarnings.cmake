# The one warning list of the project. Every target of ours calls zelvor_target_defaults.
add_library(zelvor_warnings INTERFACE)
target_compile_options(zelvor_warnings INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual
    -Wcast-align -Wnull-dereference -Wimplicit-fallthrough
    $<$<BOOL:${ZELVOR_WERROR}>:-Werror>)

if(ZELVOR_SANITIZE)
    add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=all
                        -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=address,undefined)
endif()
if(ZELVOR_TSAN)
    add_compile_options(-fsanitize=thread -fno-omit-frame-pointer -g)
    add_link_options(-fsanitize=thread)
endif()

# Applies the project's warnings to a target without exporting them to consumers.
function(zelvor_target_defaults target)
    target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:zelvor_warnings>)
endfunction()
