# A room: one folder of Classes/, one target with the sources that its CMakeLists.txt names. The rooms
# of a floor make up its library; tests/checks/check-floors says which room may include which.

# veltramoor_room(NAME LIBRARY SOURCES...): object code of the present folder, part of LIBRARY.
function(veltramoor_room name library)
  set(room veltramoor_room_${name})
  add_library(${room} OBJECT ${ARGN})
  target_include_directories(${room} PUBLIC "${PROJECT_SOURCE_DIR}/Classes")
  target_link_libraries(${room} PUBLIC Threads::Threads fmt::fmt PRIVATE veltramoor_options)
  target_link_libraries(${library} PUBLIC ${room})
  if(library STREQUAL veltramoor_core)
    veltramoor_precompile(${room} core
      <algorithm> <chrono> <filesystem> <functional> <map> <memory> <mutex> <optional> <string>
      <string_view> <vector> <fmt/format.h>)
  else()
    # A screen's code runs at the pace of a person: small rather than quick.
    if(NOT VELTRAMOOR_SANITIZE)
      target_compile_options(${room} PRIVATE $<$<CONFIG:RelWithDebInfo,Release>:-Os>)
    endif()
    veltramoor_precompile(${room} screens
      <algorithm> <chrono> <functional> <map> <memory> <mutex> <optional> <string> <string_view>
      <vector> <QAbstractListModel> <QImage> <QObject> <QPointer> <QString> <QStringList> <QTimer>
      <QUrl> <QVariant>)
  endif()
endfunction()

# veltramoor_precompile(TARGET GROUP HEADERS...): the first target of a group compiles the headers,
# the others take what it has made. They must all be compiled with the same options.
function(veltramoor_precompile target group)
  get_property(first GLOBAL PROPERTY VELTRAMOOR_PRECOMPILED_${group})
  if(first)
    target_precompile_headers(${target} REUSE_FROM ${first})
  else()
    target_precompile_headers(${target} PRIVATE ${ARGN})
    set_property(GLOBAL PROPERTY VELTRAMOOR_PRECOMPILED_${group} ${target})
  endif()
endfunction()

# veltramoor_screens_room(NAME SOURCES...): a room of the third floor, whose classes QML may name.
function(veltramoor_screens_room name)
  veltramoor_room(${name} veltramoor_screens ${ARGN})
  set(room veltramoor_room_${name})
  set_target_properties(${room} PROPERTIES AUTOMOC ON)
  # The same for every room, for they share what is precompiled.
  target_link_libraries(${room} PUBLIC Qt6::Core Qt6::Gui PRIVATE Qt6::DBus)
  # What QML's tools know these classes by.
  qt_extract_metatypes(${room})
endfunction()

# veltramoor_items(NAME SOURCES...): items of Qt Quick that stand in a room beside its screens. The
# library of the screens does without Qt Quick, so they become part of the QML module.
function(veltramoor_items name)
  set(items veltramoor_items_${name})
  add_library(${items} OBJECT ${ARGN})
  set_target_properties(${items} PROPERTIES AUTOMOC ON)
  target_include_directories(${items} PUBLIC "${PROJECT_SOURCE_DIR}/Classes")
  target_link_libraries(${items} PUBLIC Qt6::Quick PRIVATE veltramoor_options)
  qt_extract_metatypes(${items})
  set_property(GLOBAL APPEND PROPERTY VELTRAMOOR_ITEMS ${items})
endfunction()
