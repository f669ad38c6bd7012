include(${CMAKE_CURRENT_LIST_DIR}/VelorinTargets.cmake)
include(${CMAKE_CURRENT_LIST_DIR}/VelorinModule.cmake)
