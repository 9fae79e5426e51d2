# A module is a static library. A target sees the headers of the modules it links, and of those that
# they link publicly, but no others: each module has its own include folder in the build tree with a
# symbolic link for each of its headers, and the project's root is on no include path.

# halcyra_expose_headers(TARGET SCOPE HEADER...)
# Lets users of TARGET include HEADERs of the current folder by their path from the project's root.
function(halcyra_expose_headers target scope)
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  set(visible ${PROJECT_BINARY_DIR}/visible/${target})
  file(REMOVE_RECURSE ${visible})
  file(MAKE_DIRECTORY ${visible}/${folder})
  foreach(header IN LISTS ARGN)
    if(NOT EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${header})
      message(FATAL_ERROR "${target}: there is no header ${folder}/${header}")
    endif()
    file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR}/${header} ${visible}/${folder}/${header} SYMBOLIC)
  endforeach()
  target_include_directories(${target} ${scope} ${visible})
endfunction()

# halcyra_add_module(TARGET SOURCES source... [HEADERS header...])
# The headers are those named like a source, and the ones listed.
function(halcyra_add_module target)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;HEADERS")
  set(headers ${arg_HEADERS})
  foreach(source IN LISTS arg_SOURCES)
    string(REGEX REPLACE "\\.cpp$" ".hpp" header ${source})
    if(EXISTS ${CMAKE_CURRENT_SOURCE_DIR}/${header})
      list(APPEND headers ${header})
    endif()
  endforeach()
  add_library(${target} STATIC ${arg_SOURCES})
  target_link_libraries(${target} PRIVATE halcyra_flags)
  halcyra_expose_headers(${target} PUBLIC ${headers})
endfunction()

# halcyra_expose_folder(TARGET)
# Makes an INTERFACE library whose users can include everything in and below the current folder,
# which must be directly in the project's root. For tests and benchmarks.
function(halcyra_expose_folder target)
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  set(visible ${PROJECT_BINARY_DIR}/visible/${target})
  file(REMOVE_RECURSE ${visible})
  file(MAKE_DIRECTORY ${visible})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${visible}/${folder} SYMBOLIC)
  add_library(${target} INTERFACE)
  target_include_directories(${target} INTERFACE ${visible})
endfunction()
