# What `cmake --install` lays out, in three components: the libraries (Runtime), what it takes to
# build against them (Development), and the command-line tool (Tool).

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/NimbrelConfig)

install(TARGETS nimbrelutil nimbrelconfig EXPORT NimbrelConfigTargets
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Runtime NAMELINK_COMPONENT Development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT Development)

# The interface; every other header is private.
set(config_headers Api BasicConfig Config ConfigParser ConfigParserFactory ConfigRules Element
  Namespaces NimbrelConfigParser)
set(util_headers Api FilenameMunger HostUriMunger IDNConverter IRI IRIParser LocalizableString Log
  Option ParseException PortableFilenameMunger SharedPtr StringUtil UnicodeUtil UnicodeUtilICU
  UriMunger XmlDocument XmlNode XmlParser XmlParserLibXml)
set(widgetid_headers BasicWidgetId FilenameWidgetIdParser LocalizedElementParser
  PelloWidgetIdParser ProductionWidgetId WidgetId WidgetIdError WidgetIdParser)
foreach(room config util widgetid)
  list(TRANSFORM ${room}_headers REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/${room}/\\1.h")
  install(FILES ${${room}_headers}
          DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/nimbrelconfig/${room} COMPONENT Development)
endforeach()

install(EXPORT NimbrelConfigTargets NAMESPACE Nimbrel:: DESTINATION ${package_dir}
        COMPONENT Development)
configure_package_config_file(cmake/NimbrelConfigConfig.cmake.in NimbrelConfigConfig.cmake
  INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(NimbrelConfigConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/NimbrelConfigConfig.cmake
              ${PROJECT_BINARY_DIR}/NimbrelConfigConfigVersion.cmake
        DESTINATION ${package_dir} COMPONENT Development)

foreach(library nimbrelutil nimbrelconfig)
  configure_file(cmake/${library}.pc.in ${library}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${library}.pc
          DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT Development)
endforeach()
