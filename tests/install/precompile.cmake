# Qt's headers are most of what a quick build of the library compiles.
cmake_language(DEFER CALL
  target_precompile_headers printerslib_objects PRIVATE <QtCore> <QtGui> <QtSerialPort>)
