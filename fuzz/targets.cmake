# The fuzz targets, each with its source and the libraries that it needs. Whoever includes this says beforehand what
# kestrane_fuzz_target(name source libraries...) makes of one.

find_package(EXPAT REQUIRED)
find_package(pugixml REQUIRED)

kestrane_fuzz_target(data_file DataFile.cpp kestrane_app kestrane_calc kestrane_files kestrane_platform kestrane_server
  EXPAT::EXPAT pugixml::pugixml)
kestrane_fuzz_target(values Values.cpp kestrane_app kestrane_files kestrane_model kestrane_platform kestrane_views)
kestrane_fuzz_target(old_files OldFiles.cpp kestrane_files kestrane_model kestrane_platform)
kestrane_fuzz_target(download Download.cpp kestrane_app kestrane_download kestrane_files kestrane_platform kestrane_server)
kestrane_fuzz_target(assessment Assessment.cpp kestrane_assessment kestrane_model kestrane_platform)
kestrane_fuzz_target(protectors Protectors.cpp kestrane_platform kestrane_protection)
kestrane_fuzz_target(settings Settings.cpp kestrane_model kestrane_platform)
kestrane_fuzz_target(history History.cpp kestrane_files kestrane_model kestrane_platform)
kestrane_fuzz_target(recovery Recovery.cpp kestrane_app kestrane_assessment kestrane_files kestrane_platform kestrane_server)
kestrane_fuzz_target(transcript Transcript.cpp kestrane_app kestrane_download kestrane_files kestrane_platform kestrane_server)
kestrane_fuzz_target(command_line CommandLine.cpp kestrane_verbs)
