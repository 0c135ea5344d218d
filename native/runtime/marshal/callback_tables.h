// The tables of native callbacks handed to managed code at start-up, by position.
#pragma once

void*** get_all_py_wrapper_callbacks();
// Defined by each module's generated layer.
void*** get_all_pygn_generic_callbacks();
