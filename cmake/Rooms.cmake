# A room: one folder of Classes/, one target with the sources that its CMakeLists.txt names. The rooms
# of a floor make up its library; tests/checks/check-floors says which room may include which.

# veltramoor_room(NAME LIBRARY SOURCES...): object code of the present folder, part of LIBRARY.
function(veltramoor_room name library)
  set(room veltramoor_room_${name})
  add_library(${room} OBJECT ${ARGN})
  target_include_directories(${room} PUBLIC "${PROJECT_SOURCE_DIR}/Classes")
  target_link_libraries(${room} PUBLIC Threads::Threads fmt::fmt PRIVATE veltramoor_options)
  target_link_libraries(${library} PUBLIC ${room})
endfunction()

# veltramoor_screens_room(NAME SOURCES...): a room of the third floor, whose classes QML may name.
function(veltramoor_screens_room name)
  veltramoor_room(${name} veltramoor_screens ${ARGN})
  set(room veltramoor_room_${name})
  set_target_properties(${room} PROPERTIES AUTOMOC ON)
  target_link_libraries(${room} PUBLIC Qt6::Core Qt6::Gui)
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
