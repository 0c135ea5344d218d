#include "module/submodules.h"

bool fn_register_submodule(const char* full_name, PyObject* module)
{
    PyObject* modules = PyImport_GetModuleDict();  // borrowed
    return modules && PyDict_SetItemString(modules, full_name, module) == 0;
}
