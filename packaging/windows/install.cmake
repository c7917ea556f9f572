# The folder of an installed catalogue for Windows: all programs and what they need, side by side, so
# that it can also be copied as it is.
#
#   cmake --install build/windows/project --prefix build/windows/Catalogo --strip
set(programs CatalogoTarvo tarvo_launcher tarvo_verifier
    tarvo-exportar tarvo-importar tarvo-publicar tarvo-verificar)
if(TARGET tarvo-leitor-mdb)
    list(APPEND programs tarvo-leitor-mdb)
endif()
install(TARGETS ${programs} RUNTIME DESTINATION .)

# --- libraries

set(prefix $ENV{WINDOWS_PREFIX})
foreach(library Core Gui Widgets PrintSupport Svg)
    install(PROGRAMS ${prefix}/bin/Qt6${library}.dll DESTINATION .)
endforeach()
foreach(plugin platforms/qwindows styles/qwindowsvistastyle imageformats/qgif imageformats/qico imageformats/qjpeg)
    get_filename_component(folder ${plugin} DIRECTORY)
    install(PROGRAMS ${prefix}/plugins/${plugin}.dll DESTINATION ${folder})
endforeach()
# The compiler's own.
foreach(library libgcc_s_seh-1 libstdc++-6 libssp-0 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}.dll
        OUTPUT_VARIABLE path OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${path}")
        find_file(path_${library} ${library}.dll PATHS /usr/x86_64-w64-mingw32/lib REQUIRED NO_CMAKE_FIND_ROOT_PATH)
        set(path ${path_${library}})
    endif()
    install(PROGRAMS ${path} DESTINATION .)
    install(CODE "execute_process(COMMAND ${CMAKE_STRIP} \${CMAKE_INSTALL_PREFIX}/${library}.dll)")
endforeach()

# The toolkit looks for all this where it was built, unless it is told.
file(WRITE ${CMAKE_CURRENT_BINARY_DIR}/qt.conf "[Paths]\nPrefix=.\nPlugins=.\nTranslations=translations\n")
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/qt.conf DESTINATION .)
find_file(QTBASE_PT_BR qtbase_pt_BR.qm PATHS /usr/share/qt6/translations REQUIRED NO_CMAKE_FIND_ROOT_PATH)
install(FILES ${QTBASE_PT_BR} DESTINATION translations)

# --- documents

install(FILES ${CMAKE_CURRENT_SOURCE_DIR}/windows/LEIAME.txt DESTINATION .)
install(DIRECTORY ${prefix}/licenses/ DESTINATION licencas)

# The help, for data folders that have none yet.
file(GLOB help_pictures CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/help/ajuda/*.png)
install(FILES ${PROJECT_SOURCE_DIR}/src/help/ajuda/ajuda.html DESTINATION ajuda
    RENAME Ajuda_Catalogo_TARVO-LINDEN.hlp)
install(FILES ${help_pictures} DESTINATION ajuda/Ajuda)
