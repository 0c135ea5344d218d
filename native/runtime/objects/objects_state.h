// The process-wide state of the object layer, in one place.
//
// What is not in this structure, and why: PyWrpTypesMap::get_instance() is a
// singleton whose accessor is its interface (a function-local static, built on
// first use with thread-safe initialisation; its by-key tables carry their own
// mutexes).
#pragma once

#include <Python.h>
#include <cstddef>
#include <cstdint>

// One remembered decision of clr_to_py.cpp: the Python type chosen for a
// managed result of runtime type `type_key` declared as `declared`.
struct ResolvedType {
    intptr_t type_key;
    PyTypeObject* declared;
    PyTypeObject* chosen;
};

constexpr size_t kResolvedTypeSlots = 512;

struct ObjectsState {
    // Direct-mapped cache of (runtime type, declared type) -> Python type.
    // Written and read by the result converters of clr_to_py.cpp, always with
    // the GIL held, which serialises it. The choice never changes once the
    // modules are built (registrations, marker sets and the weak cache only
    // grow), so entries are never invalidated; a slot is overwritten by the
    // next pair that hashes to it. type_key 0 never hits.
    ResolvedType resolved[kResolvedTypeSlots];
};

// The one ObjectsState of the process (zero-initialised, lives until exit).
ObjectsState& objects_state();
