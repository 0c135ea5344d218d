// ImportError raisers of module start-up. Each chains onto an error already
// pending, so the import failure keeps its underlying cause.
#include "module/import_errors.h"

#include <cstdarg>

#include "marshal/error_bridge.h"
#include "module/identifiers.h"

namespace {

constexpr int kMaxFieldWarnings = 3;

void raise_import_error(const char* format, ...)
{
    va_list args;
    va_start(args, format);
    if (PyErr_Occurred())
        PyShlErr_ChainFormatV(PyExc_ImportError, format, args);
    else
        PyErr_FormatV(PyExc_ImportError, format, args);
    va_end(args);
}

// Prints the pending warning through the unraisable hook (which clears it).
void report_field_warning(int* warn_count)
{
    PyErr_WriteUnraisable(PyWrpIdTraceBack_FieldInitializationWarning);
    ++*warn_count;
}

}  // namespace

void PyShlErr_ModuleImportError(const char* module, int code)
{
    raise_import_error("One or more errors occurred while loading the module '%s' (%i)", module, code);
}

void PyShlErr_ModuleImportError(const char* module, const char* reason)
{
    raise_import_error("cannot import '%s' module. '%s'", module, reason);
}

void PyShlErr_CapsuleImportError(const char* capsule)
{
    raise_import_error("can't import capsule '%s'", capsule);
}

void PyShlErr_TypeImportError(const char* type, int code)
{
    raise_import_error("One or more errors occurred while loading the type '%s' (%i)", type, code);
}

void PyShlErr_TypeReadyError(const char* type, const char* module)
{
    raise_import_error("One or more errors occurred while checking ready the type '%s' in module '%s'", type, module);
}

// Static fields never fail the import: at most three warnings are printed per
// import, and past that any pending error is just cleared.
void PyShlErr_TypeStaticFieldsInitialization(const char* message, const char* type, int* warn_count)
{
    if (*warn_count >= kMaxFieldWarnings) {
        PyErr_Clear();
        return;
    }
    PyErr_Format(PyExc_ImportError, "static fields of type '%s' are not initialized [%s]", type, message);
    report_field_warning(warn_count);
}

void PyShlErr_StaticFieldsInitialization(const char* type, const char* field, int* warn_count)
{
    if (*warn_count >= kMaxFieldWarnings) {
        PyErr_Clear();
        return;
    }
    raise_import_error("the static field '%s' of type '%s' is not initialized", field, type);
    report_field_warning(warn_count);
}

void PyShlErr_EnumTypeInitialization(const char* message, const char* enum_name)
{
    PyErr_SetString(PyExc_TypeError, message);
    PyShlErr_ChainFormat(PyExc_ImportError, "enum type '%s' is not initialized", enum_name);
}
