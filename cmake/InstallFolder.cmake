# orskapp_install_folder(COMPONENT FOLDER): makes the folder, below the prefix unless it is absolute,
# and those above it that are missing, for everybody to read. CMake makes missing folders, too, but the
# umask of whoever installs takes bits away from them. One that is there stays as it is.
function(orskapp_install_folder component folder)
  install(CODE "
    get_filename_component(folder \"${folder}\" ABSOLUTE BASE_DIR \"\${CMAKE_INSTALL_PREFIX}\")
    execute_process(COMMAND sh -c \"umask 022 && exec mkdir -p -- \\\"\\$1\\\"\" sh \"\$ENV{DESTDIR}\${folder}\")"
    COMPONENT ${component})
endfunction()
