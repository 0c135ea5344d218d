using System;
using System.Collections;

namespace Orvane.WrpGen.Interop
{
    /// <summary>Values across the boundary: variant records to managed objects and back.</summary>
    public static unsafe class Variants
    {
        /// <summary>
        /// The managed value of a variant record (borrowed Python object or
        /// handle). Decimals, dates and times, timedeltas and UUIDs become their
        /// managed values; Python lists become list views and tuples sequence views.
        /// A failing read throws <see cref="PythonException"/> with the Python error text.
        /// </summary>
        public static object? FromArg(VariantArg* arg)
        {
            IntPtr obj = arg->Value;
            switch (arg->Type)
            {
                case 0:
                    return null;
                case 1:
                    return Handles.Target(obj);
                case 2:
                    {
                        PyStringArg text = default;
                        if (PyCallbacks.ReadString(obj, &text) == 0)
                            throw ErrorBridge.FromPython("can't read a Python str");
                        return Strings.FromArg(&text);
                    }
                case 3:
                    return ReadBytes(obj);
                case 4:
                    {
                        int truth = PyCallbacks.ReadBool(obj);
                        if (truth < 0)
                            throw ErrorBridge.FromPython("can't read a Python bool");
                        return truth != 0;
                    }
                case 5:
                    {
                        long value;
                        switch (PyCallbacks.ReadVersLong(obj, &value))
                        {
                            case 1: return (int)value;
                            case 2: return value;
                            case 3: return unchecked((ulong)value);
                            default: throw ErrorBridge.FromPython("can't read a Python int");
                        }
                    }
                case 6:
                    {
                        double value;
                        if (PyCallbacks.ReadDouble(obj, &value) == 0)
                            throw ErrorBridge.FromPython("can't read a Python float");
                        return value;
                    }
                case 7:
                case 8:
                    return Decimals.ReadVariant(arg->Type, obj);
                case 9:
                case 10:
                case 11:
                    return DateTimes.ReadVariant(arg->Type, obj);
                case 12:
                    return DateTimes.ReadTimeSpan(obj);
                case 13:
                    return Guids.ReadVariant(obj);
                case 14:
                    return new PyListView(obj);
                case 15:
                    return new PySequenceView(obj);
                default:
                    throw new NotSupportedException($"values of variant tag {arg->Type} are not read by the collection views");
            }
        }

        private static byte[] ReadBytes(IntPtr obj)
        {
            int size = PyCallbacks.SizeOfBuffer();
            byte* view = stackalloc byte[size];
            PyCallbacks.CreateBuffer(view);
            PyBytesArg info = default;
            try
            {
                if (PyCallbacks.ReadBufferView(obj, view, &info) == 0)
                    throw ErrorBridge.FromPython("can't read a Python buffer");
                return new ReadOnlySpan<byte>(info.Data, info.Length).ToArray();
            }
            finally
            {
                PyCallbacks.ReleaseBuffer(view);
            }
        }

        /// <summary>
        /// A new reference to the Python value of a managed object: None, bool,
        /// int, float, str, bytes, datetime, timedelta, Decimal, UUID, the
        /// Python object behind a view, a list
        /// wrapper for arrays and lists, otherwise a wrapper of the object's
        /// registered type. 0 with the Python error pending on failure.
        /// </summary>
        public static IntPtr ToPy(object? value)
        {
            switch (value)
            {
                case null:
                    return PyObjects.None();
                case IPyObjectView view:
                    PyObjects.IncRef(view.PyObject);
                    return view.PyObject;
                case bool b:
                    return PyCallbacks.WriteBool(b);
                case int i:
                    return PyCallbacks.WriteInt(i);
                case string s:
                    return Strings.ToPy(s);
                case double d:
                    return PyCallbacks.WriteDouble(d);
                case long l:
                    return PyCallbacks.WriteLong(l);
                case byte u8:
                    return PyCallbacks.WriteInt(u8);
                case sbyte i8:
                    return PyCallbacks.WriteInt(i8);
                case short i16:
                    return PyCallbacks.WriteInt(i16);
                case ushort u16:
                    return PyCallbacks.WriteInt(u16);
                case uint u32:
                    return PyCallbacks.WriteUInt(u32);
                case ulong u64:
                    return PyCallbacks.WriteULong(u64);
                case float f:
                    return PyCallbacks.WriteDouble(f);
                case char c:
                    return PyCallbacks.WriteChar(c);
                case Enum e:
                    return PyCallbacks.WriteLong(Convert.ToInt64(e));
                case DateTime dt:
                    return DateTimes.ToPy(dt);
                case DateTimeOffset dto:
                    return DateTimes.ToPy(dto);
                case TimeSpan ts:
                    return DateTimes.ToPy(ts);
                case decimal m:
                    return Decimals.ToPy(m);
                case Guid g:
                    return Guids.ToPy(g);
                case byte[] bytes:
                    return Bytes.ToPy(bytes);
                case Array array:
                    return PyCallbacks.WriteClrArray(Handles.Alloc(array));
                case ArrayList arrayList:
                    return PyCallbacks.WriteClrArrayList(Handles.Alloc(arrayList));
                case IList list when value.GetType().IsGenericType:
                    return PyCallbacks.WriteClrIList(Handles.Alloc(list));
                default:
                    return PyCallbacks.WriteTpo(Handles.Alloc(value), Handles.TypeKey(value));
            }
        }

        /// <summary>As <see cref="ToPy"/>, throwing <see cref="PythonErrorPendingException"/> on failure.</summary>
        public static IntPtr ToPyChecked(object? value)
        {
            IntPtr obj = ToPy(value);
            if (obj == IntPtr.Zero)
                throw new PythonErrorPendingException();
            return obj;
        }

        /// <summary>As <see cref="ToPy"/> for values headed into a Python container from a view:
        /// a failure is thrown with the Python error text.</summary>
        public static IntPtr ToPyForView(object? value)
        {
            IntPtr obj = ToPy(value);
            if (obj == IntPtr.Zero)
                throw ErrorBridge.FromPython("can't convert the value to a Python object");
            return obj;
        }
    }
}
