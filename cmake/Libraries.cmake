# The libraries of Debian that Tolvex stands on.

set(OpenGL_GL_PREFERENCE LEGACY)
find_package(OpenGL REQUIRED)

# FLTK's exported targets demand the program "fluid", which nothing here needs.
find_path(FLTK_INC FL/Fl.H REQUIRED)
find_library(FLTK_LIB fltk REQUIRED)
find_library(FLTK_GL_LIB fltk_gl REQUIRED)
add_library(tolvex_fltk INTERFACE)
target_include_directories(tolvex_fltk SYSTEM INTERFACE ${FLTK_INC})
target_link_libraries(tolvex_fltk INTERFACE ${FLTK_GL_LIB} ${FLTK_LIB} OpenGL::GLU OpenGL::GL)

find_package(VTK 9.1 REQUIRED
             COMPONENTS CommonCore CommonDataModel CommonExecutionModel FiltersCore FiltersGeneral)
