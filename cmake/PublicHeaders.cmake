# The headers that are installed: what other programs may include, and what these headers include in their turn.
# The target kq_public_headers copies exactly these to a folder of their own and compiles each by itself, so that a
# header that leans on another one's includes, or on one that isn't in the list, breaks the build.
set(KQ_PUBLIC_HEADERS
    configurator/kq_cfg.h
    configurator/kq_pdt.h
    driver/channels/channel_map.h
    driver/component_helper.h
    driver/channels/dmf_words.h
    driver/driver_proxy.h
    driver/kq_def.h
    driver/kq_driver.h
    driver/kq_driver_path.h
    driver/kq_driver_types.h
    driver/kq_driver_w.h
    driver/kq_drv.h
    driver/value_scalars.h
    driver/value_string.h
    platform/base/bounded_text.h
    platform/base/code_page.h
    platform/base/dynamic_string.h
    platform/base/export.h
    platform/base/file_system_name.h
    platform/base/paths.h
    platform/os/events.h
    platform/os/modules.h
    platform/view/controls.h
    platform/view/events.h
    platform/view/labels.h
    platform/view/list_box.h
    platform/view/menu_bar.h
    platform/view/message_box.h
    platform/view/panes.h
    platform/view/peer.h
    platform/view/settings.h
    platform/view/sheet_view.h
    platform/view/text_view.h
    platform/view/tool_box.h
    platform/view/tree_viewer.h
    platform/view/view.h
    platform/view/window.h
    scanner/file_par_scanner.h
    scanner/par_scanner.h
    scanner/par_section.h
    scanner/string_tape_reader.h
    scanner/tape_reader.h
    scanner/token.h
    scanner/unread_text.h
    template/language/host_callback.h
    template/language/languages.h)

function(kq_check_public_headers)
  set(staged ${CMAKE_BINARY_DIR}/public_headers)
  set(sources "")
  foreach(header IN LISTS KQ_PUBLIC_HEADERS)
    configure_file(${CMAKE_SOURCE_DIR}/${header} ${staged}/include/${header} COPYONLY)
    string(MAKE_C_IDENTIFIER ${header} name)
    file(CONFIGURE OUTPUT ${staged}/${name}.cpp CONTENT "#include \"${header}\"\n")
    list(APPEND sources ${staged}/${name}.cpp)
  endforeach()
  add_library(kq_public_headers OBJECT ${sources})
  target_include_directories(kq_public_headers PRIVATE ${staged}/include)
  target_link_libraries(kq_public_headers PRIVATE kq_warnings)
endfunction()
