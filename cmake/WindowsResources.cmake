# tarvo_windows_resources(TARGET DESCRIPTION): what a program for Windows carries beside its code: icon,
# version, and the manifest that tells the system how to treat it. Nothing elsewhere. TARVO_ICON names
# the icon; without one the programs have none.
set(TARVO_ICON "" CACHE FILEPATH "Icon of the programs for Windows")
set(tarvo_resources ${CMAKE_CURRENT_LIST_DIR}/../packaging/windows)

function(tarvo_windows_resources TARGET DESCRIPTION)
    if(NOT WIN32)
        return()
    endif()
    set(folder ${CMAKE_CURRENT_BINARY_DIR}/${TARGET}.resources)
    get_target_property(name ${TARGET} OUTPUT_NAME)
    if(NOT name)
        set(name ${TARGET})
    endif()
    string(REPLACE . , numbers ${PROJECT_VERSION})
    set(icon "")
    if(TARVO_ICON)
        set(icon "1 ICON \"${TARVO_ICON}\"")
    endif()
    configure_file(${tarvo_resources}/program.manifest.in ${folder}/program.manifest @ONLY)
    configure_file(${tarvo_resources}/program.rc.in ${folder}/program.rc @ONLY)
    set_source_files_properties(${folder}/program.rc PROPERTIES
        OBJECT_DEPENDS "${folder}/program.manifest;${TARVO_ICON}")
    target_sources(${TARGET} PRIVATE ${folder}/program.rc)
endfunction()
