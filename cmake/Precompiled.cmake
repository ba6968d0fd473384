# Headers of others that many sources include, compiled once for each kind of target: a whole build takes a third less.
# A source includes what it uses all the same; builds without this (clang) find what is missing.

if(NOT CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  set(precompile OFF)
else()
  set(precompile ON)
endif()
option(KESTRANE_PRECOMPILE "Compile the most used headers of others once" ${precompile})

set(standard_headers <algorithm> <array> <charconv> <chrono> <cmath> <cstdint> <functional> <iterator> <map>
  <memory> <optional> <set> <span> <string> <string_view> <utility> <vector>)
set(widget_headers <QAction> <QApplication> <QBoxLayout> <QButtonGroup> <QCheckBox> <QClipboard> <QComboBox> <QDialog>
  <QDialogButtonBox> <QFileDialog> <QFormLayout> <QGroupBox> <QHeaderView> <QLabel> <QLineEdit> <QListWidget> <QMenu>
  <QMenuBar> <QMimeData> <QMouseEvent> <QPainter> <QPushButton> <QRadioButton> <QScreen> <QScrollArea> <QSpinBox>
  <QSplitter> <QTableView> <QTabWidget> <QTimer> <QTreeWidget> <QUrl>)

# The kinds: what is compiled once, and the libraries that have it.
set(standard_kind ${standard_headers})
set(verbs_kind ${standard_headers} <CLI/CLI.hpp> <nlohmann/json.hpp>)
set(verbs_kind_packages CLI11 nlohmann_json)
set(verbs_kind_links CLI11::CLI11 nlohmann_json::nlohmann_json)
set(widgets_kind ${standard_headers} ${widget_headers})
set(widgets_kind_packages Qt6Widgets)
set(widgets_kind_links Qt6::Widgets)
set(tests_kind ${standard_headers} <gtest/gtest.h>)
set(tests_kind_packages GTest)
set(tests_kind_links GTest::gtest)
set(widget_tests_kind ${standard_headers} ${widget_headers} <gtest/gtest.h>)
set(widget_tests_kind_packages Qt6Widgets GTest)
set(widget_tests_kind_links Qt6::Widgets GTest::gtest)

# Lets a target use the compiled headers of a kind.
function(kestrane_precompile target kind)
  if(NOT KESTRANE_PRECOMPILE)
    return()
  endif()
  if(NOT TARGET headers_${kind})
    foreach(package ${${kind}_kind_packages})
      find_package(${package} REQUIRED)
    endforeach()
    file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp CONTENT "")
    add_library(headers_${kind} OBJECT ${CMAKE_BINARY_DIR}/precompiled/${kind}.cpp)
    target_link_libraries(headers_${kind} PRIVATE ${${kind}_kind_links})
    target_precompile_headers(headers_${kind} PRIVATE ${${kind}_kind})
  endif()
  target_precompile_headers(${target} REUSE_FROM headers_${kind})
endfunction()
