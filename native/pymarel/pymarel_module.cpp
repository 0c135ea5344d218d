// Entry point of orvane.pymarel, the drawing types. It shares the runtime
// and the CLR host with orvane.folaro: whichever module is imported first
// starts the runtime, the other finds it running.
#include "runtime.h"
#include "wrp_entry.h"

PyMODINIT_FUNC PyInit_pymarel(void)
{
    return fn_module_entry(wrpgen_module_record);
}
