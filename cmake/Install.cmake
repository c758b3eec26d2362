# What `cmake --install` lays out, in three components: the libraries (Runtime), what it takes to
# build against them (Development), and the command-line tool (Tool).

# The interface; every other header is private.
set(config_headers Api BasicConfig Config ConfigParser ConfigParserFactory ConfigRules Element
  ElementDescription Finding Namespaces NimbrelConfigParser ParseObserver)
set(util_headers Api FilenameMunger HostSymbols HostUriMunger IDNConverter IRI IRIParser LocalizableString
  Option ParseException PortableFilenameMunger SharedPtr StringUtil UnicodeUtil UnicodeUtilICU
  UriMunger XmlDocument XmlNode XmlParser XmlParserLibXml)
set(widgetid_headers BasicWidgetId FilenameWidgetIdParser LocalizedElementParser
  PelloWidgetIdParser PelloWidgetIdParserImpl ProductionWidgetId WidgetId WidgetIdError
  WidgetIdParser)
foreach(folder config util widgetid)
  list(TRANSFORM ${folder}_headers REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/${folder}/\\1.h")
  list(APPEND public_headers ${${folder}_headers})
endforeach()

if(NOT NIMBREL_INSTALL)
  return()
endif()

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/NimbrelConfig)

# Packages for a system's own folders need no run paths.
if(NIMBREL_RELOCATABLE)
  set_target_properties(nimbrelutil nimbrelconfig PROPERTIES INSTALL_RPATH "$ORIGIN")
endif()

install(TARGETS nimbrelutil nimbrelconfig EXPORT NimbrelConfigTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)
foreach(folder config util widgetid)
  install(FILES ${${folder}_headers}
          DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nimbrelconfig/${folder} COMPONENT Development)
endforeach()
install(FILES util/compat/tr1/memory
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nimbrelconfig/tr1 COMPONENT Development)

install(EXPORT NimbrelConfigTargets NAMESPACE Nimbrel:: DESTINATION ${package_dir}
        COMPONENT Development)
configure_package_config_file(cmake/NimbrelConfigConfig.cmake.in NimbrelConfigConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(NimbrelConfigConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/NimbrelConfigConfig.cmake
              ${PROJECT_BINARY_DIR}/NimbrelConfigConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT Development)

# The .pc files: folders given as absolute paths stay so. Otherwise the prefix is found from the folder
# of the .pc files, and moves with them.
set(pc_prefix ${CMAKE_INSTALL_PREFIX})
if(NIMBREL_RELOCATABLE AND NOT IS_ABSOLUTE "${CMAKE_INSTALL_LIBDIR}")
  file(RELATIVE_PATH pc_prefix
       ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
  string(REGEX REPLACE "/$" "" pc_prefix "\${pcfiledir}/${pc_prefix}")
endif()
foreach(dir LIBDIR INCLUDEDIR)
  set(pc_${dir} ${CMAKE_INSTALL_${dir}})
  if(NOT IS_ABSOLUTE "${pc_${dir}}")
    string(PREPEND pc_${dir} "\${prefix}/")
  endif()
endforeach()
# Shared libraries bring what they need, so that their users do without its headers and .pc files;
# static ones leave it to their user's linker.
set(requirements_of_nimbrelconfig "nimbrelutil = ${PROJECT_VERSION}")
if(NOT BUILD_SHARED_LIBS)
  set(requirements_of_nimbrelutil "libxml-2.0 icu-uc glib-2.0")
  string(APPEND requirements_of_nimbrelconfig " glib-2.0")
  if(NIMBREL_URI_LIBRARY STREQUAL "libsoup")
    string(APPEND requirements_of_nimbrelconfig " libsoup-2.4")
  endif()
endif()
foreach(library nimbrelutil nimbrelconfig)
  set(requirements ${requirements_of_${library}})
  configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
endforeach()

install(FILES LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Runtime)
install(FILES CHANGELOG.md docs/guide.md docs/elements.md docs/identifiers.md
        DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT Development)

if(NIMBREL_BUILD_TOOL)
  if(NIMBREL_RELOCATABLE)
    file(RELATIVE_PATH libraries_of_tool ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
    set_target_properties(nimbrel-config PROPERTIES INSTALL_RPATH "$ORIGIN/${libraries_of_tool}")
  endif()
  install(TARGETS nimbrel-config RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT Tool)
  install(FILES docs/editors.md docs/elements.md docs/findings.md docs/many-packages.md
          DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/nimbrel-config COMPONENT Tool)
  install(FILES docs/nimbrel-config.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Tool)
  install(FILES tools/completion/nimbrel-config.bash RENAME nimbrel-config
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions COMPONENT Tool)
  install(FILES tools/completion/_nimbrel-config
          DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/site-functions COMPONENT Tool)
endif()
