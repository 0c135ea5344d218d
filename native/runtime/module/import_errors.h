// ImportError raisers of module start-up; each chains onto a pending error.
#pragma once

#include <Python.h>

void PyShlErr_ModuleImportError(const char* module, int code);
void PyShlErr_ModuleImportError(const char* module, const char* reason);
void PyShlErr_CapsuleImportError(const char* capsule);
void PyShlErr_TypeImportError(const char* type, int code);
void PyShlErr_TypeReadyError(const char* type, const char* module);
void PyShlErr_TypeStaticFieldsInitialization(const char* message, const char* type, int* warn_count);
void PyShlErr_StaticFieldsInitialization(const char* type, const char* field, int* warn_count);
void PyShlErr_EnumTypeInitialization(const char* message, const char* enum_name);

// Imports a module and returns a new reference to one of its attributes.
PyObject* fn_import_type_from_module(const char* module, PyObject* attr_name);
