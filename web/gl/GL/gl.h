// OpenGL 1.1 as far as the show calls it: the contract between the drawing code, which is the same
// everywhere, and web/gl/gl.cpp, which turns these calls into lists for a page to draw.
//
// Left out, because the show has no use for it: lighting, fog, lists, the texture matrix and its
// generation, mipmaps, alpha and stencil tests, points, pixel rectangles, evaluators, feedback. Two
// hints and the shade model are accepted and change nothing. Calls that OpenGL would refuse with an
// error do nothing here.
#pragma once

// Names, types and values are OpenGL's own.
// NOLINTBEGIN(modernize-use-using)
#ifdef __cplusplus
extern "C" {
#endif

typedef unsigned int GLenum;
typedef unsigned int GLbitfield;
typedef unsigned int GLuint;
typedef int GLint;
typedef int GLsizei;
typedef float GLfloat;
typedef float GLclampf;
typedef double GLdouble;
typedef void GLvoid;

#define GL_DEPTH_BUFFER_BIT 0x00000100
#define GL_COLOR_BUFFER_BIT 0x00004000

#define GL_LINES 0x0001
#define GL_TRIANGLES 0x0004
#define GL_TRIANGLE_STRIP 0x0005

#define GL_ZERO 0
#define GL_ONE 1
#define GL_SRC_COLOR 0x0300
#define GL_ONE_MINUS_SRC_COLOR 0x0301
#define GL_SRC_ALPHA 0x0302
#define GL_ONE_MINUS_SRC_ALPHA 0x0303
#define GL_DST_COLOR 0x0306

#define GL_LEQUAL 0x0203
#define GL_LESS 0x0201
#define GL_ALWAYS 0x0207

#define GL_DEPTH_TEST 0x0B71
#define GL_BLEND 0x0BE2
#define GL_TEXTURE_2D 0x0DE1

#define GL_PERSPECTIVE_CORRECTION_HINT 0x0C50
#define GL_POINT_SMOOTH_HINT 0x0C51
#define GL_NICEST 0x1102
#define GL_SMOOTH 0x1D01

#define GL_UNSIGNED_BYTE 0x1401
#define GL_FLOAT 0x1406
#define GL_MODELVIEW 0x1700
#define GL_PROJECTION 0x1701
#define GL_RGB 0x1907
#define GL_RGBA 0x1908

#define GL_MODULATE 0x2100
#define GL_TEXTURE_ENV_MODE 0x2200
#define GL_TEXTURE_ENV 0x2300
#define GL_LINEAR 0x2601
#define GL_TEXTURE_MAG_FILTER 0x2800
#define GL_TEXTURE_MIN_FILTER 0x2801
#define GL_TEXTURE_WRAP_S 0x2802
#define GL_TEXTURE_WRAP_T 0x2803
#define GL_REPEAT 0x2901

#define GL_VERTEX_ARRAY 0x8074
#define GL_TEXTURE_COORD_ARRAY 0x8078

// What state is kept: blending, depth test and texturing on or off; blend and depth function.
void glEnable(GLenum capability);
void glDisable(GLenum capability);
void glBlendFunc(GLenum source, GLenum destination);
void glDepthFunc(GLenum function);
void glHint(GLenum target, GLenum mode);
void glShadeModel(GLenum mode);
void glFlush(void);

// The viewport is the show's view, whatever its place in the window: the page puts it where its
// canvas has room. The clear colour is black.
void glViewport(GLint x, GLint y, GLsizei width, GLsizei height);
void glClearColor(GLclampf red, GLclampf green, GLclampf blue, GLclampf alpha);
void glClear(GLbitfield mask);

// Two stacks; products are formed in single precision.
void glMatrixMode(GLenum mode);
void glLoadIdentity(void);
void glMultMatrixf(const GLfloat* columns);
void glPushMatrix(void);
void glPopMatrix(void);
void glTranslatef(GLfloat x, GLfloat y, GLfloat z);
void glRotatef(GLfloat degrees, GLfloat x, GLfloat y, GLfloat z); // about a coordinate axis
void glScalef(GLfloat x, GLfloat y, GLfloat z);

// Textures repeat, are filtered linearly and multiply the colour, whatever else is asked for. A
// picture has one content, its latest, in all of a frame.
void glGenTextures(GLsizei count, GLuint* names);
void glBindTexture(GLenum target, GLuint name);
void glTexParameteri(GLenum target, GLenum name, GLint value);
void glTexEnvf(GLenum target, GLenum name, GLfloat value);
void glTexImage2D(GLenum target, GLint level, GLint components, GLsizei width, GLsizei height,
                  GLint border, GLenum format, GLenum type, const GLvoid* pixels);
void glTexSubImage2D(GLenum target, GLint level, GLint x, GLint y, GLsizei width, GLsizei height,
                     GLenum format, GLenum type, const GLvoid* pixels);

// Lines, triangles and triangle strips.
void glLineWidth(GLfloat pixels);
void glColor3f(GLfloat red, GLfloat green, GLfloat blue);
void glColor4f(GLfloat red, GLfloat green, GLfloat blue, GLfloat alpha);
void glBegin(GLenum mode);
void glTexCoord2f(GLfloat s, GLfloat t);
void glTexCoord2fv(const GLfloat* st);
void glVertex3fv(const GLfloat* xyz);
void glEnd(void);

// Arrays of three coordinates and of two texture coordinates, all floats.
void glEnableClientState(GLenum array);
void glDisableClientState(GLenum array);
void glVertexPointer(GLint size, GLenum type, GLsizei stride, const GLvoid* first);
void glTexCoordPointer(GLint size, GLenum type, GLsizei stride, const GLvoid* first);
void glDrawArrays(GLenum mode, GLint first, GLsizei count);

#ifdef __cplusplus
}
#endif
// NOLINTEND(modernize-use-using)
