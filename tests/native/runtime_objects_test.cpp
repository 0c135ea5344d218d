// The wrapped-object model without a CLR: marker attributes, the type
// registry, host-state refusal, argument conversion to handles and the choice
// of Python type for managed results (with the registry's caches pre-filled).
#include "objects/clr_object.h"
#include "objects/clr_to_py.h"
#include "objects/host_state.h"
#include "objects/markattr.h"
#include "objects/py_to_clr.h"
#include "objects/types_map.h"
#include "runtime_python.h"

using namespace runtimetest;

namespace {

PyTypeObject shape_type = make_wrapper_type("test.Shape");
PyTypeObject auto_shape_type = make_wrapper_type("test.AutoShape", &shape_type);
PyTypeObject slide_type = make_wrapper_type("test.Slide");
PyTypeObject ishape_type = make_wrapper_type("test.IShape");
PyTypeObject islide_type = make_wrapper_type("test.ISlide");

class ObjectsTest : public PythonTest {
protected:
    static void SetUpTestSuite()
    {
        PythonTest::SetUpTestSuite();
        for (PyTypeObject* type : {&shape_type, &auto_shape_type, &slide_type, &ishape_type, &islide_type})
            ASSERT_EQ(PyType_Ready(type), 0);
        ASSERT_TRUE(fn_set_additional_ifcs_markattr(&auto_shape_type, 1, &ishape_type));
        ASSERT_TRUE(fn_set_implicit_ifcs_markattr(&auto_shape_type, 1, &ishape_type));
        ASSERT_TRUE(fn_set_host_markattr(&slide_type));
    }

    PyError error_;
};

TEST_F(ObjectsTest, MarkerAttributesLiveInTheTypesOwnDictionary)
{
    ASSERT_TRUE(exec("class _Marked: pass\nclass _Derived(_Marked): pass\nclass _I1: pass\nclass _I2: pass\n"));
    auto* marked = reinterpret_cast<PyTypeObject*>(PyDict_GetItemString(globals(), "_Marked"));
    auto* i1 = reinterpret_cast<PyTypeObject*>(PyDict_GetItemString(globals(), "_I1"));
    auto* i2 = reinterpret_cast<PyTypeObject*>(PyDict_GetItemString(globals(), "_I2"));

    ASSERT_TRUE(fn_set_host_markattr(marked));
    PyObject* value = eval("_Marked._orvane_clr_host");
    EXPECT_EQ(value, Py_None) << "visible as a class attribute";
    Py_XDECREF(value);
    PyObject* marked_obj = eval("_Marked()");
    PyObject* derived_obj = eval("_Derived()");
    EXPECT_TRUE(fn_has_host_markattr(marked_obj));
    EXPECT_FALSE(fn_has_host_markattr(derived_obj)) << "an inherited mark does not count";

    ASSERT_TRUE(fn_set_additional_ifcs_markattr(marked, 2, i1, i2));
    EXPECT_TRUE(fn_contains_additional_ifc_markattr(marked_obj, i2));
    EXPECT_FALSE(fn_contains_additional_ifc_markattr(derived_obj, i2));
    EXPECT_FALSE(fn_contains_implicit_ifc_markattr(marked, i1)) << "implicit set not stored yet";
    ASSERT_TRUE(fn_set_implicit_ifcs_markattr(marked, 1, i1));
    EXPECT_TRUE(fn_contains_implicit_ifc_markattr(marked, i1));
    EXPECT_FALSE(fn_contains_implicit_ifc_markattr(marked, i2));

    // A value that is not a set reads as "no", without raising.
    ASSERT_TRUE(exec("_Marked._implicit_interfaces = [_I1]\n"));
    EXPECT_FALSE(fn_contains_implicit_ifc_markattr(marked, i1));

    ASSERT_TRUE(fn_set_external_ancestor_markattr(marked, i1));
    EXPECT_TRUE(fn_has_external_ancestor_markattr(marked_obj, i1));
    EXPECT_FALSE(fn_has_external_ancestor_markattr(marked_obj, i2));

    Py_DECREF(marked_obj);
    Py_DECREF(derived_obj);
}

TEST_F(ObjectsTest, InterfaceMarksFromAnArrayTakeEveryEntry)
{
    ASSERT_TRUE(exec("class _Wide: pass\nclass _J1: pass\nclass _J2: pass\nclass _J3: pass\n"
                     "class _J4: pass\nclass _J5: pass\nclass _Other: pass\n"));
    auto type_of = [](const char* name) {
        return reinterpret_cast<PyTypeObject*>(PyDict_GetItemString(globals(), name));
    };
    PyTypeObject* wide = type_of("_Wide");
    PyTypeObject* const ifcs[] = {type_of("_J1"), type_of("_J2"), type_of("_J3"), type_of("_J4"), type_of("_J5")};
    ASSERT_TRUE(fn_set_any_ifcs_markattr_from(wide, PyWrpIdMarkattr_ImplicitInterfaces, ifcs, 5));
    ASSERT_TRUE(fn_set_any_ifcs_markattr_from(wide, PyWrpIdMarkattr_AdditionalInterfaces, ifcs, 4));
    PyObject* obj = eval("_Wide()");
    for (int i = 0; i < 5; ++i) {
        EXPECT_TRUE(fn_contains_implicit_ifc_markattr(wide, ifcs[i])) << i;
        EXPECT_EQ(fn_contains_additional_ifc_markattr(obj, ifcs[i]), i < 4) << i;
    }
    EXPECT_FALSE(fn_contains_implicit_ifc_markattr(wide, type_of("_Other")));
    PyObject* size = eval("len(_Wide.__dict__['_implicit_interfaces'])");
    EXPECT_EQ(PyLong_AsLong(size), 5);
    Py_XDECREF(size);
    Py_DECREF(obj);
}

TEST_F(ObjectsTest, TypesMapTables)
{
    PyWrpTypesMap* map = PyWrpTypesMap::get_instance();
    EXPECT_EQ(map, PyWrpTypesMap::get_instance());
    PyTypeObject* found = &islide_type;

    EXPECT_FALSE(map->find(u"Test.Missing", found));
    EXPECT_EQ(found, &islide_type) << "untouched when not found";
    map->add(u"Test.Shape", &shape_type);
    map->add(u"Test.Shape", &auto_shape_type);
    ASSERT_TRUE(map->find(u"Test.Shape", found));
    EXPECT_EQ(found, &auto_shape_type) << "add overwrites";

    map->add(1001L, &slide_type);
    ASSERT_TRUE(map->find(1001L, found));
    EXPECT_EQ(found, &slide_type);
    EXPECT_FALSE(map->find(1002L, found));

    // The weak table remembers misses as null.
    map->add_weak(2001L, nullptr);
    found = &slide_type;
    ASSERT_TRUE(map->find_weak(2001L, found));
    EXPECT_EQ(found, nullptr);
    EXPECT_FALSE(map->find(2001L, found)) << "the weak table is separate from the strong one";

    map->reserve(500);
    ASSERT_TRUE(map->find(u"Test.Shape", found));
    EXPECT_EQ(found, &auto_shape_type);
    ASSERT_TRUE(map->find(1001L, found));
}

TEST_F(ObjectsTest, InvalidHostStateRefusesConstruction)
{
    PyHostState own{true, false, "While initializing the host for the 'X' type"};
    EXPECT_EQ(fn_clr_object_checked_new(&shape_type, own), nullptr);
    take_error(error_);
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "While initializing the host for the 'X' type");
    EXPECT_EQ(error_.cause(), "");

    PyHostState inherited{true, true, "dependency failed"};
    EXPECT_EQ(fn_clr_object_checked_new(&shape_type, inherited), nullptr);
    take_error(error_);
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "one or more refereced type is not initialized");
    EXPECT_EQ(error_.cause(), "TypeError: dependency failed");

    PyObject* obj = fn_clr_object_checked_new(&auto_shape_type, PyHostState{});
    ASSERT_NE(obj, nullptr);
    EXPECT_TRUE(PyObject_TypeCheck(obj, &auto_shape_type));
    EXPECT_EQ(fn_clr_handle(obj), nullptr);
    EXPECT_TRUE(fn_is_this_module_clr_object(obj));
    Py_DECREF(obj);

    PyObject* plain = eval("object()");
    EXPECT_FALSE(fn_is_this_module_clr_object(plain));
    Py_DECREF(plain);
}

bool accept_all(void*)
{
    return true;
}
bool accept_none(void*)
{
    return false;
}
bool raise_managed(void*)
{
    PyErr_SetString(PyExc_RuntimeError, "Proxy error(System.Exception): boom");
    return false;
}

// The common deallocation as a sibling module has it: its own copy.
void sibling_dealloc(PyObject* self)
{
    Py_TYPE(self)->tp_free(self);
}

PyTypeObject make_sibling_type(const char* name, Py_ssize_t basicsize)
{
    PyTypeObject type = make_wrapper_type(name);
    type.tp_basicsize = basicsize;
    type.tp_dealloc = sibling_dealloc;
    return type;
}

PyTypeObject sibling_slide_type = make_sibling_type("sibling.Slide", sizeof(PyClrObject));
PyTypeObject sibling_view_type = make_sibling_type("sibling.View", sizeof(PyObject));

int proxy_calls = 0;
bool count_and_accept(void*)
{
    ++proxy_calls;
    return true;
}

TEST_F(ObjectsTest, OnlyWrapperTypesAreReadAsHandles)
{
    ASSERT_EQ(PyType_Ready(&sibling_slide_type), 0);
    ASSERT_EQ(PyType_Ready(&sibling_view_type), 0);
    ASSERT_TRUE(fn_set_host_markattr(&sibling_slide_type));
    ASSERT_TRUE(fn_set_host_markattr(&sibling_view_type));
    ASSERT_TRUE(exec("class _Imitation:\n"
                     "    __slots__ = ('payload',)\n"
                     "    _orvane_clr_host = None\n"
                     "_imitation = _Imitation()\n"
                     "_imitation.payload = object()\n"));
    PyObject* imitation = eval("_imitation");
    PyObject* sibling = new_wrapper(&sibling_slide_type, reinterpret_cast<void*>(0xC3));
    PyObject* view = PyType_GenericNew(&sibling_view_type, nullptr, nullptr);
    PyObject* own = new_wrapper(&shape_type, reinterpret_cast<void*>(0xA1));
    ASSERT_TRUE(imitation && sibling && view && own);

    EXPECT_TRUE(fn_is_clr_wrapper(own));
    EXPECT_FALSE(fn_is_host_marked_wrapper(own)) << "Shape carries no host mark";
    EXPECT_TRUE(fn_is_clr_wrapper(sibling));
    EXPECT_TRUE(fn_is_host_marked_wrapper(sibling)) << "a marked static type with the wrapper layout";
    for (PyObject* foreign : {view, imitation}) {
        EXPECT_FALSE(fn_is_clr_wrapper(foreign)) << Py_TYPE(foreign)->tp_name;
        EXPECT_FALSE(fn_is_host_marked_wrapper(foreign)) << Py_TYPE(foreign)->tp_name;
    }

    void* out = nullptr;
    proxy_calls = 0;
    EXPECT_EQ(fn_conv_py_clsobj_to_clr_handle(sibling, &out, &shape_type, count_and_accept, "Shape"), 1);
    EXPECT_EQ(out, reinterpret_cast<void*>(0xC3));
    EXPECT_EQ(proxy_calls, 1);
    for (PyObject* foreign : {view, imitation}) {
        EXPECT_EQ(fn_conv_py_ifcobj_to_clr_handle(foreign, &out, &ishape_type, count_and_accept, "IShape"), 0);
        take_error(error_);
        EXPECT_EQ(error_.type, "TypeError");
        EXPECT_EQ(error_.message, std::string("can't build IShape value from '") + Py_TYPE(foreign)->tp_name + "'");
    }
    EXPECT_EQ(proxy_calls, 1) << "no foreign object reaches the proxy's check";

    Py_DECREF(imitation);
    Py_DECREF(sibling);
    Py_DECREF(view);
    drop_wrapper(own);
}

TEST_F(ObjectsTest, ClassParameters)
{
    void* handle = reinterpret_cast<void*>(0xA1);
    PyObject* auto_shape = new_wrapper(&auto_shape_type, handle);
    PyObject* slide = new_wrapper(&slide_type, reinterpret_cast<void*>(0xB2));
    void* out = reinterpret_cast<void*>(1);

    EXPECT_EQ(fn_conv_py_clsobj_to_clr_handle(Py_None, &out, &shape_type, accept_none, "Shape"), 1);
    EXPECT_EQ(out, nullptr);
    EXPECT_EQ(fn_conv_py_clsobj_to_clr_handle(auto_shape, &out, &shape_type, accept_none, "Shape"), 1);
    EXPECT_EQ(out, handle) << "a subtype is accepted";

    EXPECT_EQ(fn_conv_py_clsobj_to_clr_handle(slide, &out, &shape_type, accept_none, "Shape"), 0);
    take_error(error_);
    EXPECT_EQ(error_.type, "TypeError");
    EXPECT_EQ(error_.message, "can't build Shape value from 'test.Slide'");

    // A host-marked wrapper of another class goes to the proxy's own check.
    EXPECT_EQ(fn_conv_py_clsobj_to_clr_handle(slide, &out, &shape_type, accept_all, "Shape"), 1);
    EXPECT_EQ(out, reinterpret_cast<void*>(0xB2));
    EXPECT_EQ(fn_conv_py_clsobj_to_clr_handle(slide, &out, &shape_type, raise_managed, "Shape"), 0);
    take_error(error_);
    EXPECT_EQ(error_.type, "RuntimeError");

    PyObject* number = eval("3");
    EXPECT_EQ(fn_conv_py_clsobj_to_clr_handle(number, &out, &shape_type, accept_all, "Shape"), 0);
    take_error(error_);
    EXPECT_EQ(error_.message, "can't build Shape value from 'int'");
    Py_DECREF(number);

    drop_wrapper(auto_shape);
    drop_wrapper(slide);
}

TEST_F(ObjectsTest, InterfaceParameters)
{
    PyObject* auto_shape = new_wrapper(&auto_shape_type, reinterpret_cast<void*>(0xA1));
    PyObject* ishape = new_wrapper(&ishape_type, reinterpret_cast<void*>(0xC3));
    PyObject* shape = new_wrapper(&shape_type, reinterpret_cast<void*>(0xD4));
    void* out = nullptr;

    EXPECT_EQ(fn_conv_py_ifcobj_to_clr_handle(ishape, &out, &ishape_type, accept_none, "IShape"), 1);
    EXPECT_EQ(out, reinterpret_cast<void*>(0xC3));
    EXPECT_EQ(fn_conv_py_ifcobj_to_clr_handle(auto_shape, &out, &ishape_type, accept_none, "IShape"), 1);
    EXPECT_EQ(out, reinterpret_cast<void*>(0xA1)) << "listed among the additional interfaces";
    // Shape itself does not list IShape, and its type carries no host mark.
    EXPECT_EQ(fn_conv_py_ifcobj_to_clr_handle(shape, &out, &ishape_type, accept_all, "IShape"), 0);
    take_error(error_);
    EXPECT_EQ(error_.message, "can't build IShape value from 'test.Shape'");

    drop_wrapper(auto_shape);
    drop_wrapper(ishape);
    drop_wrapper(shape);
}

TEST_F(ObjectsTest, ResultsTakeTheMostDerivedRegisteredType)
{
    PyWrpTypesMap* map = PyWrpTypesMap::get_instance();
    // Known runtime types, as if named by the managed side once before.
    map->add_weak(7001L, &auto_shape_type);  // implements IShape
    map->add_weak(7002L, nullptr);           // an internal class with no Python type
    map->add_weak(7003L, &slide_type);       // does not list IShape

    auto ifc_result = [](intptr_t key) {
        return fn_conv_clr_ifcimpl_to_py_ifcimpl(PyObjectOutArg{reinterpret_cast<void*>(0xE5), key}, &ishape_type);
    };
    PyObject* obj = ifc_result(7001);
    ASSERT_NE(obj, nullptr);
    EXPECT_EQ(Py_TYPE(obj), &auto_shape_type);
    EXPECT_EQ(fn_clr_handle(obj), reinterpret_cast<void*>(0xE5));
    drop_wrapper(obj);
    obj = ifc_result(7002);
    EXPECT_EQ(Py_TYPE(obj), &ishape_type);
    drop_wrapper(obj);
    obj = ifc_result(7003);
    EXPECT_EQ(Py_TYPE(obj), &ishape_type);
    drop_wrapper(obj);

    PyObject* none = fn_conv_clr_ifcimpl_to_py_ifcimpl(PyObjectOutArg{nullptr, 7001}, &ishape_type);
    EXPECT_EQ(none, Py_None) << "a null handle is None, never a wrapper";
    Py_DECREF(none);

    // Non-sealed class results: a registered subtype wins, anything else is the declared class.
    obj = fn_conv_clr_basobj_to_py_basobj(PyObjectOutArg{reinterpret_cast<void*>(0xE6), 7001}, &shape_type);
    EXPECT_EQ(Py_TYPE(obj), &auto_shape_type);
    drop_wrapper(obj);
    obj = fn_conv_clr_basobj_to_py_basobj(PyObjectOutArg{reinterpret_cast<void*>(0xE7), 7003}, &shape_type);
    EXPECT_EQ(Py_TYPE(obj), &shape_type);
    drop_wrapper(obj);

    // A Python object that went through managed code comes back as itself.
    PyObject* list = eval("[1]");
    Py_ssize_t before = Py_REFCNT(list);
    PyObject* same = fn_conv_clr_ifcimpl_to_py_ifcimpl_wps(PyCollectionArg{1, list, 0}, &ishape_type);
    EXPECT_EQ(same, list);
    EXPECT_EQ(Py_REFCNT(list), before + 1);
    Py_DECREF(same);
    Py_DECREF(list);
}

}  // namespace
