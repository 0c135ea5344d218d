// Item access of generated types whose indexer takes a key rather than a
// position in a collection, or several keys: x[k] and x[a, b] call the type's
// get_item, x[k] = v its set_item, with the key's values as the arguments.
#pragma once

#include <Python.h>

// For types with a readable and writable indexer, and for read-only ones.
extern PyMappingMethods wrpPye_keyed_items_rw;
extern PyMappingMethods wrpPye_keyed_items_ro;
