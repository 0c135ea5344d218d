namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// Module-wide helpers of the generated layer: the dispatcher's error
    /// bookkeeping and the IDisposable parameter converter.
    /// </summary>
    internal static class CommonEmitter
    {
        public static void Run(EmitContext ctx)
        {
            var w = ctx.Unit(ctx.Model.Units.Common, "Helpers shared by the generated functions").Public[Section.Common];
            ctx.Declare(Section.Common, "PyObject* wrpPy_dispatch_take_error();");
            ctx.Declare(Section.Common, "void wrpPy_dispatch_release(PyObject** errors, int count);");
            ctx.Declare(Section.Common, "PyObject* wrpPy_dispatch_fail(PyObject** errors, int count);");
            ctx.Declare(Section.Common, $"int {CppTypes.DisposableConverter}(PyObject* obj, void** out);");
            ctx.Declare(Section.Common, $"int {CppTypes.NullableConverter}(PyObject* obj, PyNullableArg* arg);");

            w.Line("// Takes the pending error of a candidate that did not parse and keeps its value");
            w.Line("// (normalised, so that str() gives the message). Never null.");
            w.Open("PyObject* wrpPy_dispatch_take_error()");
            w.Line("PyObject* type = nullptr;");
            w.Line("PyObject* value = nullptr;");
            w.Line("PyObject* traceback = nullptr;");
            w.Line("PyErr_Fetch(&type, &value, &traceback);");
            w.Line("PyErr_NormalizeException(&type, &value, &traceback);");
            w.Line("Py_XDECREF(type);");
            w.Line("Py_XDECREF(traceback);");
            w.Open("if (!value)");
            w.Line("Py_INCREF(Py_None);");
            w.Line("return Py_None;");
            w.Close();
            w.Line("return value;");
            w.Close();
            w.Line();

            w.Open("void wrpPy_dispatch_release(PyObject** errors, int count)");
            w.Line("for (int i = 0; i < count; ++i)").Indent().Line("Py_CLEAR(errors[i]);").Outdent();
            w.Close();
            w.Line();

            w.Line("// No candidate parsed: TypeError whose value is the list of the candidates' messages.");
            w.Open("PyObject* wrpPy_dispatch_fail(PyObject** errors, int count)");
            w.Line("PyObject* messages = PyList_New(count);");
            w.Open("for (int i = 0; messages && i < count; ++i)");
            w.Line("PyObject* text = errors[i] ? PyObject_Str(errors[i]) : PyUnicode_FromString(\"\");");
            w.Line("if (!text)").Indent().Line("Py_CLEAR(messages);").Outdent();
            w.Line("else").Indent().Line("PyList_SET_ITEM(messages, i, text);").Outdent();
            w.Close();
            w.Line("wrpPy_dispatch_release(errors, count);");
            w.Open("if (messages)");
            w.Line("PyErr_SetObject(PyExc_TypeError, messages);");
            w.Line("Py_DECREF(messages);");
            w.Close();
            w.Line("return nullptr;");
            w.Close();
            w.Line();

            w.Line("// System.IDisposable parameters: disposable wrappers, or wrappers whose object the");
            w.Line("// disposable proxy accepts.");
            w.Open($"int {CppTypes.DisposableConverter}(PyObject* obj, void** out)");
            w.Line($"return fn_conv_py_ifcobj_to_clr_handle(obj, out, &{CppTypes.DisposableType}, wrpPye_is_assignable_to_disposable, \"IDisposable\");");
            w.Close();
            w.Line();

            w.Line("// Nullable parameters: None leaves has_value 0, anything else goes through the");
            w.Line("// record's typed converter (the record needs no extra word).");
            w.Open($"int {CppTypes.NullableConverter}(PyObject* obj, PyNullableArg* arg)");
            w.Line("return fn_conv_py_nullable_to_clr_nullable(obj, arg, nullptr);");
            w.Close();
            w.Line();
        }
    }
}
