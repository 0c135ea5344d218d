#include "module/identifiers.h"

// Interned once and never released: they live as long as the interpreter.
PyObject* PyWrpIdStr_Empty = nullptr;
PyObject* PyWrpIdRawIo_Write = nullptr;
PyObject* PyWrpIdRawIo_ReadInto = nullptr;
PyObject* PyWrpIdRawIo_Seek = nullptr;
PyObject* PyWrpIdRawIo_Flush = nullptr;
PyObject* PyWrpIdRawIo_Close = nullptr;
PyObject* PyWrpIdRawIo_Closed = nullptr;
PyObject* PyWrpIdRawIo_Readable = nullptr;
PyObject* PyWrpIdRawIo_Writable = nullptr;
PyObject* PyWrpIdRawIo_Seekable = nullptr;
PyObject* PyWrpIdRawIo_Tell = nullptr;
PyObject* PyWrpIdMarkattr_OrvaneClrHost = nullptr;
PyObject* PyWrpIdMarkattr_ExternalAncestor = nullptr;
PyObject* PyWrpIdMarkattr_AdditionalInterfaces = nullptr;
PyObject* PyWrpIdMarkattr_ImplicitInterfaces = nullptr;
PyObject* PyWrpIdTypeName_IntEnum = nullptr;
PyObject* PyWrpIdTypeName_Enum = nullptr;
PyObject* PyWrpIdTypeName_Uuid = nullptr;
PyObject* PyWrpIdTypeName_Decimal = nullptr;
PyObject* PyWrpIdTypeName_DecimalTuple = nullptr;
PyObject* PyWrpIdTypeName_RawIOBase = nullptr;
PyObject* PyWrpIdTypeName_BufferedIOBase = nullptr;
PyObject* PyWrpIdTypeName_BufferStream = nullptr;
PyObject* PyWrpIdTypeName_DateTime = nullptr;
PyObject* PyWrpIdTypeName_TimeZone = nullptr;
PyObject* PyWrpIdUuid_BytesLe = nullptr;
PyObject* PyWrpIdDecimal_Exponent = nullptr;
PyObject* PyWrpIdDecimal_Sign = nullptr;
PyObject* PyWrpIdDecimal_Digits = nullptr;
PyObject* PyWrpIdDecimal_AsTuple = nullptr;
PyObject* PyWrpIdDateTime_Tzinfo = nullptr;
PyObject* PyWrpIdDateTime_UtcOffset = nullptr;
PyObject* PyWrpIdDateTime_Utc = nullptr;
PyObject* PyWrpIdList_Extend = nullptr;
PyObject* PyWrpIdList_Pop = nullptr;
PyObject* PyWrpIdList_Clear = nullptr;
PyObject* PyWrpIdList_Remove = nullptr;
PyObject* PyWrpIdList_Index = nullptr;
PyObject* PyWrpIdTraceBack_FormatException = nullptr;
PyObject* PyWrpIdTraceBack_FormatExceptionOnly = nullptr;
PyObject* PyWrpIdTraceBack_FormatExceptionWarning = nullptr;
PyObject* PyWrpIdTraceBack_Unknown = nullptr;
PyObject* PyWrpIdType_Qualname = nullptr;
PyObject* PyWrpIdTraceBack_FieldInitializationWarning = nullptr;

void fn_intern_identifiers()
{
    // A second import finds them already made.
    if (PyWrpIdStr_Empty)
        return;
    PyWrpIdStr_Empty = PyUnicode_InternFromString("");
    PyWrpIdRawIo_Write = PyUnicode_InternFromString("write");
    PyWrpIdRawIo_ReadInto = PyUnicode_InternFromString("readinto");
    PyWrpIdRawIo_Seek = PyUnicode_InternFromString("seek");
    PyWrpIdRawIo_Flush = PyUnicode_InternFromString("flush");
    PyWrpIdRawIo_Close = PyUnicode_InternFromString("close");
    PyWrpIdRawIo_Closed = PyUnicode_InternFromString("closed");
    PyWrpIdRawIo_Readable = PyUnicode_InternFromString("readable");
    PyWrpIdRawIo_Writable = PyUnicode_InternFromString("writable");
    PyWrpIdRawIo_Seekable = PyUnicode_InternFromString("seekable");
    PyWrpIdRawIo_Tell = PyUnicode_InternFromString("tell");
    PyWrpIdMarkattr_OrvaneClrHost = PyUnicode_InternFromString("_orvane_clr_host");
    PyWrpIdMarkattr_ExternalAncestor = PyUnicode_InternFromString("_external_ancestor");
    PyWrpIdMarkattr_AdditionalInterfaces = PyUnicode_InternFromString("_additional_interfaces");
    PyWrpIdMarkattr_ImplicitInterfaces = PyUnicode_InternFromString("_implicit_interfaces");
    PyWrpIdTypeName_IntEnum = PyUnicode_InternFromString("IntEnum");
    PyWrpIdTypeName_Enum = PyUnicode_InternFromString("Enum");
    PyWrpIdTypeName_Uuid = PyUnicode_InternFromString("UUID");
    PyWrpIdTypeName_Decimal = PyUnicode_InternFromString("Decimal");
    PyWrpIdTypeName_DecimalTuple = PyUnicode_InternFromString("DecimalTuple");
    PyWrpIdTypeName_RawIOBase = PyUnicode_InternFromString("RawIOBase");
    PyWrpIdTypeName_BufferedIOBase = PyUnicode_InternFromString("BufferedIOBase");
    PyWrpIdTypeName_BufferStream = PyUnicode_InternFromString("BufferStream");
    PyWrpIdTypeName_DateTime = PyUnicode_InternFromString("datetime");
    PyWrpIdTypeName_TimeZone = PyUnicode_InternFromString("timezone");
    PyWrpIdUuid_BytesLe = PyUnicode_InternFromString("bytes_le");
    PyWrpIdDecimal_Exponent = PyUnicode_InternFromString("exponent");
    PyWrpIdDecimal_Sign = PyUnicode_InternFromString("sign");
    PyWrpIdDecimal_Digits = PyUnicode_InternFromString("digits");
    PyWrpIdDecimal_AsTuple = PyUnicode_InternFromString("as_tuple");
    PyWrpIdDateTime_Tzinfo = PyUnicode_InternFromString("tzinfo");
    PyWrpIdDateTime_UtcOffset = PyUnicode_InternFromString("utcoffset");
    PyWrpIdDateTime_Utc = PyUnicode_InternFromString("utc");
    PyWrpIdList_Extend = PyUnicode_InternFromString("extend");
    PyWrpIdList_Pop = PyUnicode_InternFromString("pop");
    PyWrpIdList_Clear = PyUnicode_InternFromString("clear");
    PyWrpIdList_Remove = PyUnicode_InternFromString("remove");
    PyWrpIdList_Index = PyUnicode_InternFromString("index");
    PyWrpIdTraceBack_FormatException = PyUnicode_InternFromString("format_exception");
    PyWrpIdTraceBack_FormatExceptionOnly = PyUnicode_InternFromString("format_exception_only");
    PyWrpIdTraceBack_FormatExceptionWarning = PyUnicode_InternFromString("FormatCallbackException");
    PyWrpIdTraceBack_Unknown = PyUnicode_InternFromString("<unknown>");
    PyWrpIdType_Qualname = PyUnicode_InternFromString("__qualname__");
    PyWrpIdTraceBack_FieldInitializationWarning = PyUnicode_InternFromString("FieldInitializationWarning");
}
