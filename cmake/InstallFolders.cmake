include(GNUInstallDirs)

# Nobody starts the reader by hand, so it is installed where programs keep their helpers, and found from the folder of the
# program that starts it: what is installed can be moved as a whole.
set(TALLYFOLD_READER_FOLDER ${CMAKE_INSTALL_LIBEXECDIR}/tallyfold)
file(RELATIVE_PATH TALLYFOLD_READER_FROM_PROGRAM
    ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBEXECDIR}/tallyfold)
