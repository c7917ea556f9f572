# SQLCipher, linked statically: where the distribution's own is older than version 4, the shared library
# would have to come from another suite on every computer that installs the catalogue.
#
# Its .pc file carries the version of the SQLite inside; SQLCipher 4 begins with 3.31.
pkg_check_modules(SQLCIPHER REQUIRED sqlcipher>=3.31)
find_library(SQLCIPHER_ARCHIVE NAMES ${CMAKE_STATIC_LIBRARY_PREFIX}sqlcipher${CMAKE_STATIC_LIBRARY_SUFFIX}
    HINTS ${SQLCIPHER_LIBRARY_DIRS} ${SQLCIPHER_LIBDIR} REQUIRED)
add_library(SQLCipher::SQLCipher STATIC IMPORTED)
set_target_properties(SQLCipher::SQLCipher PROPERTIES IMPORTED_LOCATION ${SQLCIPHER_ARCHIVE})
target_include_directories(SQLCipher::SQLCipher INTERFACE ${SQLCIPHER_INCLUDE_DIRS})
set(beside ${SQLCIPHER_STATIC_LIBRARIES})
list(REMOVE_ITEM beside sqlcipher)
target_link_directories(SQLCipher::SQLCipher INTERFACE ${SQLCIPHER_STATIC_LIBRARY_DIRS})
target_link_libraries(SQLCipher::SQLCipher INTERFACE ${beside} ${CMAKE_DL_LIBS})
