/// @file
/// What the library lets out: K5AX_API marks every name that a host links to.
#ifndef K5AX_PLATFORM_EXPORT_H
#define K5AX_PLATFORM_EXPORT_H

/// Marks a function, an object or a class that hosts link to; everything else stays inside the library.
///
/// Reads the same in C and in C++. On Windows the library itself is built with K5AX_BUILDING_LIBRARY defined,
/// and where a definition file says what it lets out, with K5AX_EXPORTS_IN_FILE too; a host defines neither.
#if defined(_WIN32)
#if defined(K5AX_BUILDING_LIBRARY) && defined(K5AX_EXPORTS_IN_FILE)
#define K5AX_API
#elif defined(K5AX_BUILDING_LIBRARY)
#define K5AX_API __declspec(dllexport)
#else
#define K5AX_API __declspec(dllimport)
#endif
#elif defined(__GNUC__)
#define K5AX_API __attribute__((visibility("default")))
#else
#define K5AX_API
#endif

/// The same for a function that is a friend of a class. There a host's g++ for Windows cannot take the mark,
/// and warns of the difference; a function is found without it.
#if defined(_WIN32) && !defined(K5AX_BUILDING_LIBRARY)
#define K5AX_API_FRIEND
#else
#define K5AX_API_FRIEND K5AX_API
#endif

#endif
