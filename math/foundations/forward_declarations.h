#pragma once
// The first declaration of every exported class that the value types name before its own header
// is read. Exported classes carry MATH_API on their first declaration: clang gives a template
// member hidden visibility when a type of its signature was first declared without it, and GCC
// ignores the attribute on a declaration that follows the definition. Headers therefore
// forward-declare through this file only.
#include "math/foundations/export.h"

template <typename T>
class MATH_API C3DVector3Tpl;
template <typename T>
class MATH_API C3DVector4Tpl;
template <typename T>
class MATH_API C3DMatrix33Tpl;
template <typename T>
class MATH_API C3DRotMatTpl;
template <typename T>
class MATH_API C3DMatrix44Tpl;
template <typename T>
class MATH_API C3DXfoMatTpl;
template <typename T>
class MATH_API C3DRotation3Tpl;
class MATH_API C3DRotation;
