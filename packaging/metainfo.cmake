# The metainfo of the program, for a project's page with a public address or, `web` being empty, without:
#
#   estructura_metainfo(https://example.org/estructura ${CMAKE_CURRENT_BINARY_DIR}/estructura.metainfo.xml)
#
# AppStream takes pictures by public address only, so there is one exactly when the project has an address.
function(estructura_metainfo web target)
  set(METAINFO_WEB "")
  if(web)
    set(METAINFO_WEB "
  <url type=\"homepage\">${web}</url>
  <screenshots>
    <screenshot type=\"default\">
      <caption>The window while a program runs</caption>
      <caption xml:lang=\"es\">La ventana mientras corre un programa</caption>
      <image type=\"source\">${web}/docs/ventana.png</image>
    </screenshot>
  </screenshots>")
  endif()
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/estructura.metainfo.xml.in ${target} @ONLY)
endfunction()
