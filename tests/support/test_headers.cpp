// Nothing but the headers that the tests of the rooms share: see tests/CMakeLists.txt.
