// Entry point of orvane_probe, the test-only module bound from Orvane.Probe:
// one managed member per marshalling case, so every conversion is tested
// through real managed calls.
#include "runtime.h"
#include "wrp_entry.h"

PyMODINIT_FUNC PyInit_orvane_probe(void)
{
    return fn_module_entry(wrpgen_module_record);
}
