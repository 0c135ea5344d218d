// Import-time pieces that need no CLR: error raisers and their chaining, the
// static-field warning cap, standard-module look-ups, and the _wrpgen tree
// with the disposable wrapper.
#include "interop/disposable.h"
#include "interop/interop_module.h"
#include "module/import_errors.h"
#include "module/module_entry.h"
#include "objects/markattr.h"
#include "runtime_python.h"

using namespace runtimetest;

// The generated layer's _generic builder; this binary links no generated code.
PyObject* wrpPygn_mlit_FFFFFFFF_generic_wrappers(const char* root_name)
{
    std::string name = std::string(root_name) + "._wrpgen._generic";
    return PyModule_New(name.c_str());
}

namespace {

class ModuleTest : public PythonTest {
protected:
    PyError error_;
};

TEST_F(ModuleTest, ImportErrorsChainOntoPendingErrors)
{
    PyShlErr_ModuleImportError("orvane.folaro", -1);
    take_error(error_);
    EXPECT_EQ(error_.type, "ImportError");
    EXPECT_EQ(error_.message, "One or more errors occurred while loading the module 'orvane.folaro' (-1)");
    EXPECT_EQ(error_.cause(), "");

    PyErr_SetString(PyExc_TypeError, "exchange host missing");
    PyShlErr_ModuleImportError("orvane.folaro", -1);
    take_error(error_);
    EXPECT_EQ(error_.cause(), "TypeError: exchange host missing");

    struct Case {
        void (*raise)();
        const char* message;
    };
    const Case cases[] = {
        {[] { PyShlErr_ModuleImportError("orvane.pymarel", "gone"); }, "cannot import 'orvane.pymarel' module. 'gone'"},
        {[] { PyShlErr_CapsuleImportError("orvane.pymarel.printing._C_APIT_PrinterSettings"); },
         "can't import capsule 'orvane.pymarel.printing._C_APIT_PrinterSettings'"},
        {[] { PyShlErr_TypeImportError("orvane.folaro.SaveFormat", 0); },
         "One or more errors occurred while loading the type 'orvane.folaro.SaveFormat' (0)"},
        {[] { PyShlErr_TypeReadyError("orvane.folaro.Slide", "orvane.folaro"); },
         "One or more errors occurred while checking ready the type 'orvane.folaro.Slide' in module 'orvane.folaro'"},
    };
    for (const Case& c : cases) {
        c.raise();
        take_error(error_);
        EXPECT_EQ(error_.type, "ImportError");
        EXPECT_EQ(error_.message, c.message);
    }
}

TEST_F(ModuleTest, EnumInitializationChainsTheHostMessage)
{
    PyShlErr_EnumTypeInitialization("host message", "orvane.folaro.SaveFormat");
    take_error(error_);
    EXPECT_EQ(error_.type, "ImportError");
    EXPECT_EQ(error_.message, "enum type 'orvane.folaro.SaveFormat' is not initialized");
    EXPECT_EQ(error_.cause(), "TypeError: host message");
}

TEST_F(ModuleTest, StaticFieldWarningsAreCappedAtThree)
{
    UnraisableCapture capture;
    int warn_count = 0;
    PyShlErr_TypeStaticFieldsInitialization("no host", "orvane.folaro.TextStyle", &warn_count);
    EXPECT_FALSE(PyErr_Occurred());
    for (int i = 0; i < 3; ++i) {
        PyErr_SetString(PyExc_RuntimeError, "Proxy error(System.Exception): getter");
        PyShlErr_StaticFieldsInitialization("orvane.folaro.BuildVersionInfo", "PRODUCT", &warn_count);
        EXPECT_FALSE(PyErr_Occurred()) << "never fails the import";
    }
    PyShlErr_TypeStaticFieldsInitialization("no host", "orvane.folaro.TextStyle", &warn_count);
    EXPECT_FALSE(PyErr_Occurred());

    EXPECT_EQ(warn_count, 3);
    ASSERT_EQ(capture.count(), 3);
    EXPECT_EQ(capture.entry(0),
              "FieldInitializationWarning|ImportError|static fields of type 'orvane.folaro.TextStyle' are not "
              "initialized [no host]|None");
    EXPECT_EQ(capture.entry(1),
              "FieldInitializationWarning|ImportError|the static field 'PRODUCT' of type "
              "'orvane.folaro.BuildVersionInfo' is not initialized|RuntimeError('Proxy error(System.Exception): "
              "getter')");
}

TEST_F(ModuleTest, ImportTypeFromModule)
{
    PyObject* name = PyUnicode_FromString("IntEnum");
    PyObject* type = fn_import_type_from_module("enum", name);
    PyObject* expected = eval("__import__('enum').IntEnum");
    EXPECT_EQ(type, expected);
    Py_XDECREF(type);
    Py_XDECREF(expected);

    EXPECT_EQ(fn_import_type_from_module("orvane_no_such_module", name), nullptr);
    take_error(error_);
    EXPECT_EQ(error_.type, "ImportError");
    EXPECT_EQ(error_.message, "cannot import 'orvane_no_such_module' module");
    EXPECT_EQ(error_.cause().rfind("ModuleNotFoundError: ", 0), 0u) << error_.cause();

    EXPECT_EQ(fn_import_type_from_module("math", name), nullptr);
    take_error(error_);
    EXPECT_EQ(error_.message, "can't import 'IntEnum' type from 'math' module");
    EXPECT_EQ(error_.cause().rfind("AttributeError: ", 0), 0u) << error_.cause();
    Py_DECREF(name);
}

TEST_F(ModuleTest, WrpgenTreeHoldsTheInteropTypes)
{
    // Named before anything readies the type, as the module entry does.
    wrpPye_prepare_interop_types("orvane.test");
    PyObject* root = PyModule_New("orvane.test");
    ASSERT_TRUE(wrpPye_mlit_FFFFFFFF_common_wrappers(root));
    PyDict_SetItemString(globals(), "_root", root);

    PyObject* type = eval("_root._wrpgen._interop._IDisposableWrapper");
    EXPECT_EQ(type, reinterpret_cast<PyObject*>(&wrpPye_tyds_FFFFFFFF_IDisposableWrapper));
    Py_XDECREF(type);
    EXPECT_STREQ(wrpPye_tyds_FFFFFFFF_IDisposableWrapper.tp_name, "orvane.test._wrpgen._interop._IDisposableWrapper");
    PyObject* mark = eval("_root._wrpgen._interop._IDisposableWrapper.__dict__['_orvane_clr_host']");
    EXPECT_EQ(mark, Py_None);
    Py_XDECREF(mark);
    PyObject* generic = eval("sys.modules['orvane.test._wrpgen._generic'] is _root._wrpgen._generic");
    EXPECT_EQ(generic, Py_True);
    Py_XDECREF(generic);
    PyObject* interop_name = eval("sys.modules['orvane.test._wrpgen._interop'].__name__");
    EXPECT_EQ(to_utf8(interop_name), "orvane.test._wrpgen._interop");
    Py_XDECREF(interop_name);

    // Not constructible from Python: tp_init refuses (tp_new is not reached
    // here, since no class is derived and no host runs in this process).
    PyObject* obj = new_wrapper(&wrpPye_tyds_FFFFFFFF_IDisposableWrapper, reinterpret_cast<void*>(0x77));
    PyObject* args = PyTuple_New(0);
    EXPECT_EQ(Py_TYPE(obj)->tp_init(obj, args, nullptr), -1);
    take_error(error_);
    EXPECT_EQ(error_.message, "type has no available constructor");
    Py_DECREF(args);

    PyObject* entered = wrpPye_mtfn_disposable_enter(obj, nullptr);
    EXPECT_EQ(entered, obj);
    Py_DECREF(entered);
    drop_wrapper(obj);

    PyDict_DelItemString(globals(), "_root");
    Py_DECREF(root);
}

PyTypeObject disposable_class_type = make_wrapper_type("test.Presentation");

TEST_F(ModuleTest, DisposableParameters)
{
    ASSERT_EQ(PyType_Ready(&disposable_class_type), 0);
    ASSERT_TRUE(fn_set_additional_ifcs_markattr(&disposable_class_type, 1, &wrpPye_tyds_FFFFFFFF_IDisposableWrapper));
    ASSERT_GE(PyType_Ready(&wrpPye_tyds_FFFFFFFF_IDisposableWrapper), 0);

    PyObject* wrapper = new_wrapper(&wrpPye_tyds_FFFFFFFF_IDisposableWrapper, reinterpret_cast<void*>(0x31));
    PyObject* presentation = new_wrapper(&disposable_class_type, reinterpret_cast<void*>(0x32));
    void* out = reinterpret_cast<void*>(1);

    EXPECT_EQ(wrpPye_conv_py_to_clr_disposable(Py_None, &out), 1);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(wrpPye_conv_py_to_clr_disposable(wrapper, &out), 1);
    EXPECT_EQ(out, reinterpret_cast<void*>(0x31));
    EXPECT_EQ(wrpPye_conv_py_to_clr_disposable(presentation, &out), 1);
    EXPECT_EQ(out, reinterpret_cast<void*>(0x32));

    PyObject* text = eval("'deck.pptx'");
    EXPECT_EQ(wrpPye_conv_py_to_clr_disposable(text, &out), 0);
    take_error(error_);
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build IDisposable value from 'str'");
    Py_DECREF(text);

    drop_wrapper(wrapper);
    drop_wrapper(presentation);
}

}  // namespace
