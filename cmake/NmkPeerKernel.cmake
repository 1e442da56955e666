# The geometry kernel that tests compare curves with, where it is installed.

# nmk_link_peer_kernel(target): defines NMK_WITH_PEER_KERNEL for the target and links it.
function(nmk_link_peer_kernel target)
    find_path(NMK_PEER_KERNEL_HEADERS Geom_BezierCurve.hxx PATH_SUFFIXES opencascade)
    set(libraries "")
    foreach(name TKGeomAlgo TKGeomBase TKG3d TKG2d TKMath TKernel)
        find_library(NMK_PEER_KERNEL_${name} ${name})
        list(APPEND libraries ${NMK_PEER_KERNEL_${name}})
    endforeach()
    if(NMK_PEER_KERNEL_HEADERS AND NOT "${libraries}" MATCHES "NOTFOUND")
        target_compile_definitions(${target} PRIVATE NMK_WITH_PEER_KERNEL)
        target_include_directories(${target} SYSTEM PRIVATE ${NMK_PEER_KERNEL_HEADERS})
        target_link_libraries(${target} PRIVATE ${libraries})
    endif()
endfunction()
