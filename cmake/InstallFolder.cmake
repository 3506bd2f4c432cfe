# orskapp_install_folder(COMPONENT FOLDER): creates the folder, below the prefix unless it is absolute, and
# missing folders above it, with mode 755. CMake would apply the umask of the user who installs. Existing
# folders do not change.
function(orskapp_install_folder component folder)
  install(CODE "
    get_filename_component(folder \"${folder}\" ABSOLUTE BASE_DIR \"\${CMAKE_INSTALL_PREFIX}\")
    execute_process(COMMAND sh -c \"umask 022 && exec mkdir -p -- \\\"\\$1\\\"\" sh \"\$ENV{DESTDIR}\${folder}\")"
    COMPONENT ${component})
endfunction()
