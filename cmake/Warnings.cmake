# Warnings of every target of ours.
add_library(kq_warnings INTERFACE)
target_compile_options(kq_warnings INTERFACE -Wall -Wextra -Wpedantic -Wconversion)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  # GCC 12 sees overlapping copies inside std::string's own operators when it inlines them.
  target_compile_options(kq_warnings INTERFACE -Wno-restrict)
  if(KQ_SANITIZE)
    # It loses track of what is initialized there once the sanitizers' checks are in between.
    target_compile_options(kq_warnings INTERFACE -Wno-maybe-uninitialized)
  endif()
endif()
if(KQ_WERROR)
  target_compile_options(kq_warnings INTERFACE -Werror)
endif()
if(KQ_SANITIZE)
  add_compile_options(-fsanitize=${KQ_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${KQ_SANITIZE})
endif()
