// <root>._wrpgen._interop: the fixed wrapper types shared by every module.
#pragma once

#include <Python.h>

// Names the fixed wrapper types "<root_name>._wrpgen._interop.<Type>". Runs
// before the generated tree, which readies some of them as dependencies;
// types already readied keep their name.
void wrpPye_prepare_interop_types(const char* root_name);
