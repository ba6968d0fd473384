# How the programs are built for Windows. The oldest Windows is 10. Files are written as they are, without a carriage return
# before each line's end, and printf is that of the standard in place of the system's. What Qt defines is defined everywhere,
# since headers that are compiled once (cmake/Precompiled.cmake) fit no other definitions. A program without Qt needs no library
# that the system does not have. With it, programs and modules share the libraries of the compiler, so that an error of
# one is an error of the other.
add_compile_definitions(_WIN32_WINNT=0x0A00 WIN32_LEAN_AND_MEAN NOMINMAX __USE_MINGW_ANSI_STDIO=1
  MINGW_HAS_SECURE_API=1 UNICODE _UNICODE WIN32 WIN64 _WIN64 _ENABLE_EXTENDED_ALIGNED_STORAGE)
string(APPEND CMAKE_EXE_LINKER_FLAGS " /usr/${triple}/lib/binmode.o")
if(NOT KESTRANE_QT)
  string(APPEND CMAKE_EXE_LINKER_FLAGS " -static")
endif()
enable_language(RC)

# What Windows shows of a program: its version, its company and the icon, which is drawn at build time; and what the
# program asks of Windows.
function(kestrane_windows_program target description)
  set(icon ${CMAKE_CURRENT_BINARY_DIR}/${target}.ico)
  set(icon_line "1 ICON \"${icon}\"")
  set(script ${CMAKE_CURRENT_BINARY_DIR}/${target}.rc)
  configure_file(${CMAKE_SOURCE_DIR}/packaging/windows/program.rc.in ${script} @ONLY)
  set(drawing ${CMAKE_SOURCE_DIR}/src/resources/icons/application.svg)
  add_custom_command(OUTPUT ${icon}
    COMMAND ${CMAKE_SOURCE_DIR}/packaging/windows/icon.sh ${drawing} ${icon}
    DEPENDS ${drawing} ${CMAKE_SOURCE_DIR}/packaging/windows/icon.sh VERBATIM)
  set_source_files_properties(${script} PROPERTIES
    OBJECT_DEPENDS "${icon};${CMAKE_SOURCE_DIR}/packaging/windows/program.manifest")
  target_sources(${target} PRIVATE ${script})
endfunction()

# The licences of what is in the programs go with them: Kestrane's, those of Debian packages, and what these refer to.
function(kestrane_licences)
  foreach(package ${ARGN})
    install(FILES /usr/share/doc/${package}/copyright DESTINATION licences RENAME ${package}.txt)
  endforeach()
endfunction()
install(FILES ${CMAKE_SOURCE_DIR}/LICENSE DESTINATION licences RENAME Kestrane.txt)
install(FILES /usr/share/common-licenses/LGPL-3 DESTINATION licences RENAME LGPL-3.txt)
kestrane_licences(g++-mingw-w64-x86-64-posix libcli11-dev libz-mingw-w64-dev mingw-w64-x86-64-dev nlohmann-json3-dev)
list(GET KESTRANE_LIBRARIES 0 libraries)
install(FILES ${libraries}/sources/libxlsxwriter/debian/copyright DESTINATION licences RENAME libxlsxwriter.txt)

# Qt and what it needs go beside the programs, its plugins and translations beside their folder, where qt.conf has it look
# for them. kestrane-cli draws without a window (qoffscreen), as tests do.
if(NOT KESTRANE_QT)
  return()
endif()
set(qt ${KESTRANE_LIBRARIES})
list(FILTER qt INCLUDE REGEX "installed$")
set(dlls)
foreach(name libQCustomPlotQt6 Qt6Core Qt6Gui Qt6Network Qt6PrintSupport Qt6SerialPort Qt6Svg Qt6Widgets)
  list(APPEND dlls ${qt}/bin/${name}.dll)
endforeach()
foreach(name libgcc_s_seh-1 libstdc++-6 libwinpthread-1 zlib1)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${name}.dll
    OUTPUT_VARIABLE dll OUTPUT_STRIP_TRAILING_WHITESPACE)
  execute_process(COMMAND ${CMAKE_STRIP} -o ${CMAKE_BINARY_DIR}/${name}.dll ${dll})
  list(APPEND dlls ${CMAKE_BINARY_DIR}/${name}.dll)
endforeach()
file(COPY ${dlls} ${qt}/bin/Qt6Test.dll DESTINATION ${CMAKE_BINARY_DIR}/bin)
file(WRITE ${CMAKE_BINARY_DIR}/bin/qt.conf "[Paths]\nPrefix = ..\n")
install(FILES ${dlls} ${CMAKE_BINARY_DIR}/bin/qt.conf DESTINATION bin)
foreach(plugin imageformats/qjpeg platforms/qoffscreen platforms/qwindows styles/qwindowsvistastyle tls/qschannelbackend)
  get_filename_component(kind ${plugin} DIRECTORY)
  file(COPY ${qt}/plugins/${plugin}.dll DESTINATION ${CMAKE_BINARY_DIR}/plugins/${kind})
  install(FILES ${qt}/plugins/${plugin}.dll DESTINATION plugins/${kind})
endforeach()
# What is drawn without a window has the fonts of this folder alone.
set(fonts)
foreach(family liberation/LiberationMono liberation/LiberationSans liberation/LiberationSerif dejavu/DejaVuSansMono)
  file(GLOB files /usr/share/fonts/truetype/${family}-*.ttf /usr/share/fonts/truetype/${family}.ttf)
  list(APPEND fonts ${files})
endforeach()
if(NOT fonts)
  message(FATAL_ERROR "The fonts of the packages fonts-liberation and fonts-dejavu-core are missing.")
endif()
file(COPY ${fonts} DESTINATION ${CMAKE_BINARY_DIR}/lib/fonts)
install(FILES ${fonts} DESTINATION lib/fonts)
file(GLOB languages ${CMAKE_SOURCE_DIR}/src/resources/translations/*.po)
foreach(language ${languages})
  get_filename_component(language ${language} NAME_WE)
  install(FILES /usr/share/qt6/translations/qtbase_${language}.qm DESTINATION translations)
endforeach()

foreach(package qt6-base qcustomplot)
  install(FILES ${qt}/../sources/${package}/debian/copyright DESTINATION licences RENAME ${package}.txt)
endforeach()
kestrane_licences(fonts-dejavu-core fonts-liberation)
