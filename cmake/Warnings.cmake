# Warnings are errors for the project's own code; Qt and GoogleTest come in as
# system headers through their imported targets.
function(vm20_warnings target)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Werror)
endfunction()
