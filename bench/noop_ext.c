/* A baseline for the call benchmarks: a getset and a method that do the same
 * Python-side work as a generated wrapper (argument parsing included) but call
 * nothing, so the difference to the binding is the cost of crossing into
 * managed code. */
#include <Python.h>

typedef struct {
    PyObject_HEAD void* handle;
} NoopObject;

static PyObject* noop_get_int(PyObject* self, void* closure)
{
    return PyLong_FromLong(1);
}

static PyObject* noop_get_obj(PyObject* self, void* closure)
{
    /* An object result: allocate a fresh object like a wrapper would. */
    return PyType_GenericNew(Py_TYPE(self), NULL, NULL);
}

typedef struct {
    Py_ssize_t length;
    int kind;
    const void* data;
} StrArg;

static int conv_str(PyObject* obj, void* out)
{
    StrArg* arg = (StrArg*)out;
    if (!PyUnicode_Check(obj)) {
        PyErr_Format(PyExc_TypeError, "can't build String from '%s'", Py_TYPE(obj)->tp_name);
        return 0;
    }
    if (PyUnicode_READY(obj) < 0)
        return 0;
    arg->length = PyUnicode_GET_LENGTH(obj);
    arg->kind = PyUnicode_KIND(obj);
    arg->data = PyUnicode_DATA(obj);
    return 1;
}

static PyObject* noop_method(PyObject* self, PyObject* args, PyObject* kwargs)
{
    static char* keywords[] = {"name", NULL};
    StrArg name = {-1, 0, NULL};
    if (!PyArg_ParseTupleAndKeywords(args, kwargs, "O&", keywords, conv_str, &name))
        return NULL;
    Py_RETURN_NONE;
}

static PyGetSetDef noop_getset[] = {
    {"int_value", noop_get_int, NULL, NULL, NULL},
    {"obj_value", noop_get_obj, NULL, NULL, NULL},
    {NULL},
};

static PyMethodDef noop_methods[] = {
    {"method", (PyCFunction)(void (*)(void))noop_method, METH_VARARGS | METH_KEYWORDS, NULL},
    {NULL},
};

static PyTypeObject NoopType = {
    PyVarObject_HEAD_INIT(NULL, 0).tp_name = "orvane_bench_noop.Noop",
    .tp_basicsize = sizeof(NoopObject),
    .tp_flags = Py_TPFLAGS_DEFAULT,
    .tp_methods = noop_methods,
    .tp_getset = noop_getset,
    .tp_new = PyType_GenericNew,
};

static struct PyModuleDef noop_module = {
    PyModuleDef_HEAD_INIT, "orvane_bench_noop", NULL, -1, NULL,
};

PyMODINIT_FUNC PyInit_orvane_bench_noop(void)
{
    PyObject* module;
    if (PyType_Ready(&NoopType) < 0)
        return NULL;
    module = PyModule_Create(&noop_module);
    if (!module)
        return NULL;
    Py_INCREF(&NoopType);
    if (PyModule_AddObject(module, "Noop", (PyObject*)&NoopType) < 0) {
        Py_DECREF(&NoopType);
        Py_DECREF(module);
        return NULL;
    }
    return module;
}
