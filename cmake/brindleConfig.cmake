# Gives the target brindle::brindle; the library needs nothing but the C++ runtime.
include("${CMAKE_CURRENT_LIST_DIR}/brindleTargets.cmake")
