// The matrix that undoes another one.
#pragma once

#include "base/matrix4.h"

// For matrices whose last row is 0 0 0 1. False, with `inverse` as it was, when the matrix is none of those,
// is not finite, or flattens space: then no matrix undoes it.
bool InvertMatrix(const Matrix4& matrix, Matrix4& inverse);
