// The one call of GLU that the show makes.
#pragma once

#include <GL/gl.h>

#ifdef __cplusplus
extern "C" {
#endif

void gluPerspective(GLdouble fieldOfView, GLdouble aspect, GLdouble nearPlane, GLdouble farPlane);

#ifdef __cplusplus
}
#endif
