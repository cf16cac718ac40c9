# Makes one script of the page's modules, given in an order in which none needs a later one:
# cmake -D "MODULES=a.js;b.js" -D SCRIPT=all.js -P join.cmake
# An import takes one line; what modules export shares one scope, so their names differ.
set(script "")
foreach(module IN LISTS MODULES)
    file(READ ${module} text)
    string(REGEX REPLACE "\n(import [^\n]*\n)+" "\n" text "\n${text}")
    string(REPLACE "\nexport " "\n" text "${text}")
    string(APPEND script "${text}")
endforeach()
file(WRITE ${SCRIPT} "${script}")
