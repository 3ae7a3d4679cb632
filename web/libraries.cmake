# What the show links in a page, under the names of the libraries that it links elsewhere.
add_library(web_sdl_headers INTERFACE)
target_include_directories(web_sdl_headers INTERFACE ${PROJECT_SOURCE_DIR}/web/sdl)
add_library(PkgConfig::SDL ALIAS web_sdl_headers)

add_library(web_gl_headers INTERFACE)
target_include_directories(web_gl_headers INTERFACE ${PROJECT_SOURCE_DIR}/web/gl)
add_library(OpenGL::GL ALIAS web_gl_headers)
add_library(OpenGL::GLU ALIAS web_gl_headers)

# Built by scripts/build-web-openmpt.
set(KSO_WEB_OPENMPT "" CACHE PATH "libopenmpt for the web: a folder with libopenmpt.a and include/")
add_library(web_openmpt INTERFACE)
target_include_directories(web_openmpt SYSTEM INTERFACE ${KSO_WEB_OPENMPT}/include)
target_link_libraries(web_openmpt INTERFACE ${KSO_WEB_OPENMPT}/libopenmpt.a)
add_library(PkgConfig::OPENMPT ALIAS web_openmpt)

add_library(web_no_threads INTERFACE)
add_library(Threads::Threads ALIAS web_no_threads)
