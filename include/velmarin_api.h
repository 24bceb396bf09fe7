/* velmarin: how the library's exported names are marked.
 *
 * VELMARIN_API stands before every exported class and function. Building the
 * library (VELMARIN_BUILD) it exports; a Windows host that includes the
 * headers imports from velmarin.dll; a build of the library's objects linked
 * statically (VELMARIN_STATIC, the project's own tests) marks nothing. */
#ifndef VELMARIN_API_H
#define VELMARIN_API_H

#if defined(VELMARIN_STATIC)
#define VELMARIN_API
#elif defined(_WIN32)
#if defined(VELMARIN_BUILD)
#define VELMARIN_API __declspec(dllexport)
#else
#define VELMARIN_API __declspec(dllimport)
#endif
#else
#define VELMARIN_API __attribute__((visibility("default")))
#endif

#endif
