/* What a machine answers through its classes alone, as plain C functions: is it valid, part and machine
 * coordinates, the kind and the transform of a node, and the channels to the host. For callers in other
 * languages; a library of its own on top of k5ax, for a host to copy and to extend.
 *
 * Threads, and how long a pointer is good, are as in k5ax. No exception leaves these functions.
 */
#ifndef K5AX_BRIDGE_H
#define K5AX_BRIDGE_H

#include <k5ax/k5ax.h>

#if defined(_WIN32) && defined(K5AX_BUILDING_BRIDGE)
#define K5AX_BRIDGE_API __declspec(dllexport)
#elif defined(_WIN32)
#define K5AX_BRIDGE_API __declspec(dllimport)
#else
#define K5AX_BRIDGE_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* The sinks of the three channels. The texts are good until the sink returns; `data` is what the host
 * installed with it. A sink must not throw. */
typedef void (*k5ax_bridge_text_sink)(const char* text, void* data);
typedef void (*k5ax_bridge_error_sink)(const char* text, int code, void* data);
typedef void (*k5ax_bridge_assertion_sink)(const char* a, const char* b, const char* c, int line, void* data);

/* 1 for a machine that can be worked with, 0 for another and for null, -1 when memory runs out. */
K5AX_BRIDGE_API int k5ax_bridge_is_valid(const k5ax_machdef* machdef);

/* Three doubles each: a point on the part; a, b, c in radians; and where the machine has to go for it, which
 * may be written over the point. Nothing when a pointer is null. */
K5AX_BRIDGE_API void k5ax_bridge_part_to_machine(const k5ax_machdef* machdef, const double* p_part,
                                                 const double* abc, double* p_mach);

/* The way back, and the tool direction as the part sees it. Nothing when a pointer is null. */
K5AX_BRIDGE_API void k5ax_bridge_machine_to_part(const k5ax_machdef* machdef, const double* p_mach,
                                                 const double* abc, double* p_part, double* d_tool_part);

/* 0 a plain node, 1 an axis node, 2 a tool node; -1 for null. */
K5AX_BRIDGE_API int k5ax_bridge_node_kind(const k5ax_node* node);

/* Twelve doubles, from the node's frame to its parent's: the images of X, Y and Z, then that of the origin.
 * Nothing when a pointer is null. */
K5AX_BRIDGE_API void k5ax_bridge_node_matrix(const k5ax_node* node, double* node_to_parent);

/* The record of an axis node, borrowed from the node; null for another kind and for null. */
K5AX_BRIDGE_API const TAxis* k5ax_bridge_node_axis(const k5ax_node* node);

/* Install a sink, or uninstall it with null. */
K5AX_BRIDGE_API void k5ax_bridge_on_feedback(k5ax_bridge_text_sink sink, void* data);
K5AX_BRIDGE_API void k5ax_bridge_on_error(k5ax_bridge_error_sink sink, void* data);
K5AX_BRIDGE_API void k5ax_bridge_on_assertion(k5ax_bridge_assertion_sink sink, void* data);

/* Send to a sink; null is sent as an empty text. The library itself sends feedback alone. */
K5AX_BRIDGE_API void k5ax_bridge_feedback(const char* text);
K5AX_BRIDGE_API void k5ax_bridge_error(const char* text, int code);
K5AX_BRIDGE_API void k5ax_bridge_assertion_failed(const char* a, const char* b, const char* c, int line);

#ifdef __cplusplus
}
#endif

#endif
