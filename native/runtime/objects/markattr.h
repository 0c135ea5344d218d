// Marker attributes kept in a generated type's own dictionary.
#pragma once

#include <Python.h>
#include <cstdarg>
#include <cstddef>

bool fn_set_host_markattr(PyTypeObject* type);
bool fn_has_host_markattr(PyObject* obj);
bool fn_set_external_ancestor_markattr(PyTypeObject* type, PyTypeObject* ancestor);
bool fn_has_external_ancestor_markattr(PyObject* obj, PyTypeObject* ancestor);
// count trailing PyTypeObject* arguments form the set.
bool fn_set_additional_ifcs_markattr(PyTypeObject* type, int count, ...);
bool fn_set_implicit_ifcs_markattr(PyTypeObject* type, int count, ...);
bool fn_set_any_ifcs_markattr(PyTypeObject* type, PyObject* key, int count, va_list list);
// The same from an array, for callers whose interface lists vary in length
// (a variadic call must spell out exactly `count` arguments).
bool fn_set_any_ifcs_markattr_from(PyTypeObject* type, PyObject* key, PyTypeObject* const* ifcs, size_t count);
bool fn_contains_additional_ifc_markattr(PyObject* obj, PyTypeObject* ifc_type);
bool fn_contains_implicit_ifc_markattr(PyTypeObject* type, PyTypeObject* ifc_type);
bool fn_contains_any_ifc_markattr(PyTypeObject* type, PyObject* key, PyTypeObject* ifc_type);
