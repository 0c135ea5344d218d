// Python strings interned once at import, used for attribute look-ups by name.
#pragma once

#include <Python.h>

extern PyObject* PyWrpIdStr_Empty;
extern PyObject* PyWrpIdRawIo_Write;
extern PyObject* PyWrpIdRawIo_ReadInto;
extern PyObject* PyWrpIdRawIo_Seek;
extern PyObject* PyWrpIdRawIo_Flush;
extern PyObject* PyWrpIdRawIo_Close;
extern PyObject* PyWrpIdRawIo_Closed;
extern PyObject* PyWrpIdRawIo_Readable;
extern PyObject* PyWrpIdRawIo_Writable;
extern PyObject* PyWrpIdRawIo_Seekable;
extern PyObject* PyWrpIdRawIo_Tell;
extern PyObject* PyWrpIdMarkattr_OrvaneClrHost;
extern PyObject* PyWrpIdMarkattr_ExternalAncestor;
extern PyObject* PyWrpIdMarkattr_AdditionalInterfaces;
extern PyObject* PyWrpIdMarkattr_ImplicitInterfaces;
extern PyObject* PyWrpIdTypeName_IntEnum;
extern PyObject* PyWrpIdTypeName_Enum;
extern PyObject* PyWrpIdTypeName_Uuid;
extern PyObject* PyWrpIdTypeName_Decimal;
extern PyObject* PyWrpIdTypeName_DecimalTuple;
extern PyObject* PyWrpIdTypeName_RawIOBase;
extern PyObject* PyWrpIdTypeName_BufferedIOBase;
extern PyObject* PyWrpIdTypeName_BufferStream;
extern PyObject* PyWrpIdTypeName_DateTime;
extern PyObject* PyWrpIdTypeName_TimeZone;
extern PyObject* PyWrpIdUuid_BytesLe;
extern PyObject* PyWrpIdDecimal_Exponent;
extern PyObject* PyWrpIdDecimal_Sign;
extern PyObject* PyWrpIdDecimal_Digits;
extern PyObject* PyWrpIdDecimal_AsTuple;
extern PyObject* PyWrpIdDateTime_Tzinfo;
extern PyObject* PyWrpIdDateTime_UtcOffset;
extern PyObject* PyWrpIdDateTime_Utc;
extern PyObject* PyWrpIdList_Extend;
extern PyObject* PyWrpIdList_Pop;
extern PyObject* PyWrpIdList_Clear;
extern PyObject* PyWrpIdList_Remove;
extern PyObject* PyWrpIdList_Index;
extern PyObject* PyWrpIdItem_Get;
extern PyObject* PyWrpIdItem_Set;
extern PyObject* PyWrpIdTraceBack_FormatException;
extern PyObject* PyWrpIdTraceBack_FormatExceptionOnly;
extern PyObject* PyWrpIdTraceBack_FormatExceptionWarning;
extern PyObject* PyWrpIdTraceBack_Unknown;
extern PyObject* PyWrpIdType_Qualname;
extern PyObject* PyWrpIdTraceBack_FieldInitializationWarning;
// Key of the sequence element a thread holds for managed code (interop/containers.cpp).
extern PyObject* PyWrpIdThread_SequenceItem;

void fn_intern_identifiers();
