// Entry point of orvane.folaro. Everything module-specific (names, the
// generated module tree, capsule imports, static fields) comes from the
// generated wrp_entry.h; the sequence itself is the runtime's.
#include "runtime.h"
#include "wrp_entry.h"

PyMODINIT_FUNC PyInit_folaro(void)
{
    return fn_module_entry(wrpgen_module_record);
}
