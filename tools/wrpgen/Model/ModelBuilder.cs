using System;
using System.Collections.Generic;
using System.Linq;
using System.Reflection;
using Orvane.WrpGen.Metadata;
using Orvane.WrpGen.Passes;

namespace Orvane.WrpGen.Model
{
    /// <summary>
    /// Reads the public surface of the selected types into the model, as
    /// metadata has it: every public member in declaration order, with its
    /// declared types. How each type crosses, and what cannot be bound, is
    /// decided by the passes. Members keep their metadata order because that is
    /// the order overloads are tried.
    /// </summary>
    internal sealed class ModelBuilder
    {
        private const BindingFlags Declared = BindingFlags.Public | BindingFlags.DeclaredOnly;
        private readonly BindingModel _model;
        private readonly Assembly _input;
        private readonly Dictionary<Type, BoundType> _bound = new();

        private ModelBuilder(BindingModel model, Assembly input) { _model = model; _input = input; }

        public static BindingModel Build(Assembly input, IReadOnlyList<(Assembly Assembly, string PythonModule)> siblings,
                                         string pythonModule, string? rootNamespace, string proxyAssembly, string company)
        {
            var exported = input.GetExportedTypes();
            string root = rootNamespace ?? Naming.CommonNamespace(
                exported.Where(t => !t.IsNested && !string.IsNullOrEmpty(t.Namespace)).Select(t => t.Namespace!));
            var model = new BindingModel(pythonModule, root, proxyAssembly, company);
            var builder = new ModelBuilder(model, input);
            builder.CollectSiblings(siblings);
            builder.CollectTypes(TypeSelection.Run(model, exported));
            return model;
        }

        private void CollectSiblings(IReadOnlyList<(Assembly Assembly, string PythonModule)> siblings)
        {
            foreach (var (assembly, pyModule) in siblings)
            {
                var types = assembly.GetExportedTypes()
                    .Where(t => !t.IsNested && !t.IsGenericTypeDefinition && !t.IsEnum && !string.IsNullOrEmpty(t.Namespace)
                                && (t.IsClass || t.IsValueType || t.IsInterface) && !TypeSelection.IsDelegateType(t))
                    .ToList();
                string ns = Naming.CommonNamespace(types.Select(t => t.Namespace!));
                foreach (var t in types.OrderBy(t => t.FullName, StringComparer.Ordinal))
                    _model.SiblingTypes.Add(new SiblingType(t, KindOf(t), pyModule, ns));
            }
        }

        private static TypeKind KindOf(Type t) =>
            t.IsEnum ? TypeKind.Enum : t.IsInterface ? TypeKind.Interface : t.IsValueType ? TypeKind.Struct : TypeKind.Class;

        private void CollectTypes(IEnumerable<Type> selected)
        {
            foreach (var t in selected)
            {
                var bt = new BoundType(t, KindOf(t));
                _bound[t] = bt;
                _model.Types.Add(bt);
            }
            foreach (var bt in _model.Types)
            {
                if (bt.IsEnum)
                    CollectEnum(bt);
                else
                    CollectObject(bt);
            }
        }

        private static void CollectEnum(BoundType bt)
        {
            bt.EnumUnderlyingClr = bt.Clr.GetEnumUnderlyingType();
            foreach (var f in bt.Clr.GetFields(BindingFlags.Public | BindingFlags.Static | BindingFlags.DeclaredOnly))
                if (f.IsLiteral)
                    bt.EnumMembers.Add(new EnumMemberModel(f.Name, f.GetRawConstantValue()));
        }

        private void CollectObject(BoundType bt)
        {
            var t = bt.Clr;
            // Base class: bound when it is a class of this module; otherwise the
            // public members of bases of this assembly that have no Python type
            // of their own are taken in as the type's own.
            var levels = new List<Type> { t };
            if (!bt.IsInterface)
            {
                for (var b = t.BaseType; b != null; b = b.BaseType)
                {
                    if (_bound.TryGetValue(b, out var boundBase) && !boundBase.IsEnum)
                    {
                        bt.Base = boundBase;
                        break;
                    }
                    if (b.Assembly != _input)
                        break;
                    levels.Add(b);
                }
            }
            CollectInterfaces(bt);
            bt.IsEnumerable = t.GetInterfaces().Any(i => i.FullName == "System.Collections.IEnumerable");
            bt.EnumerableElementClr = t.GetInterfaces().FirstOrDefault(i =>
                i.IsGenericType && i.GetGenericTypeDefinition().FullName == "System.Collections.Generic.IEnumerable`1")
                ?.GetGenericArguments()[0];
            bt.HasCount = HasCount(t);

            if (!bt.IsInterface && !(t.IsAbstract && !t.IsSealed) && !(t.IsAbstract && t.IsSealed))
            {
                foreach (var c in t.GetConstructors(BindingFlags.Public | BindingFlags.Instance))
                    bt.Constructors.Add(MakeMethod(bt, c, bt.Name, isCtor: true, isStatic: false));
                if (bt.IsStruct && !bt.Constructors.Any(c => c.Parameters.Count == 0))
                    bt.Constructors.Add(new MethodModel(bt, bt.Name, isCtor: true, isStatic: false, new List<ParameterModel>(), null)
                    { IsImplicitDefault = true, ReportSignature = Sig(bt, "..ctor", "", dotIncluded: true) });
            }

            var methodKeys = new HashSet<string>(StringComparer.Ordinal);
            var propertyNames = new HashSet<string>(StringComparer.Ordinal);
            foreach (var level in levels)
            {
                foreach (var m in level.GetMethods(Declared | BindingFlags.Instance | BindingFlags.Static))
                {
                    if (m.Name.Contains('<') || IsObjectOverride(m))
                        continue;
                    if (m.IsSpecialName)
                    {
                        if (m.Name.StartsWith("op_", StringComparison.Ordinal))
                            bt.Operators.Add(Sig(bt, "." + m.Name, ParameterList(m), dotIncluded: true));
                        continue;  // accessors are bound through their property or event
                    }
                    string key = m.Name + "(" + string.Join(",", m.GetParameters().Select(p => p.ParameterType.FullName)) + ")";
                    if (!methodKeys.Add(key))
                        continue;  // overridden or hidden by a more derived level
                    bt.Methods.Add(MakeMethod(bt, m, m.Name, isCtor: false, isStatic: m.IsStatic));
                }
                foreach (var p in level.GetProperties(Declared | BindingFlags.Instance | BindingFlags.Static))
                {
                    // Indexers share the name Item: each signature is a member of its own.
                    var index = p.GetIndexParameters();
                    string key = index.Length == 0 ? p.Name
                        : p.Name + "(" + string.Join(",", index.Select(i => i.ParameterType.FullName)) + ")";
                    if (!propertyNames.Add(key))
                        continue;
                    CollectProperty(bt, p);
                }
                foreach (var f in level.GetFields(Declared | BindingFlags.Instance | BindingFlags.Static))
                {
                    if (f.Name.Contains('<') || !propertyNames.Add(f.Name))
                        continue;
                    CollectField(bt, f);
                }
                foreach (var e in level.GetEvents(Declared | BindingFlags.Instance | BindingFlags.Static))
                    bt.Events.Add(Sig(bt, e.Name, DisplayNames.Of(e.EventHandlerType!)));
            }
            // Fields before properties; each kind keeps its declaration order.
            var statics = bt.StaticMembers.OrderBy(s => s.IsField ? 0 : 1).ToList();
            bt.StaticMembers.Clear();
            bt.StaticMembers.AddRange(statics);
        }

        private void CollectInterfaces(BoundType bt)
        {
            int index = 0;
            foreach (var i in bt.Clr.GetInterfaces())
            {
                if (i.FullName == "System.IDisposable")
                {
                    bt.IsDisposable = true;
                    bt.DisposableIndex = index++;
                }
                else if (_bound.TryGetValue(i, out var bi))
                {
                    bt.Interfaces.Add(bi);
                    index++;
                }
            }
        }

        private static bool IsObjectOverride(MethodInfo m)
        {
            if (m.IsStatic || !m.IsVirtual) return false;
            var ps = m.GetParameters();
            return (m.Name == "ToString" && ps.Length == 0)
                || (m.Name == "GetHashCode" && ps.Length == 0)
                || (m.Name == "Equals" && ps.Length == 1 && ps[0].ParameterType.FullName == "System.Object");
        }

        private static MethodModel MakeMethod(BoundType bt, MethodBase mb, string name, bool isCtor, bool isStatic)
        {
            var parameters = mb.GetParameters()
                .Select((p, i) => new ParameterModel(string.IsNullOrEmpty(p.Name) ? $"arg{i}" : p.Name!, p.ParameterType, p.IsOut))
                .ToList();
            return new MethodModel(bt, name, isCtor, isStatic, parameters, (mb as MethodInfo)?.ReturnType)
            {
                IsGenericDefinition = mb.IsGenericMethodDefinition,
                IsAbstract = mb.IsAbstract,
                ReportSignature = Sig(bt, isCtor ? "..ctor" : "." + name, ParameterList(mb), dotIncluded: true),
            };
        }

        private static string ParameterList(MethodBase mb) =>
            string.Join(", ", mb.GetParameters().Select(p => DisplayNames.Of(p.ParameterType)));

        private static void CollectProperty(BoundType bt, PropertyInfo p)
        {
            var getter = p.GetMethod is { IsPublic: true } g ? g : null;
            var setter = p.SetMethod is { IsPublic: true } s && !IsInitOnly(s) ? s : null;
            if (getter == null && setter == null)
                return;
            var index = p.GetIndexParameters();
            if (index.Length > 0)
            {
                // Each instance accessor is a keyed accessor until the binding-kind
                // pass makes the indexer the type's element access.
                var get = getter is { IsStatic: false } ? KeyedAccessor(bt, getter, MemberAccess.IndexGet) : null;
                var set = setter is { IsStatic: false } ? KeyedAccessor(bt, setter, MemberAccess.IndexSet) : null;
                bool intIndex = index.Length == 1 && index[0].ParameterType.FullName == "System.Int32" && get != null;
                bt.IndexedProperties.Add(new IndexedProperty(p.PropertyType, intIndex, setter != null, get, set));
                return;
            }
            string sig = Sig(bt, p.Name, DisplayNames.Of(p.PropertyType));
            if ((getter ?? setter)!.IsStatic)
            {
                bt.StaticMembers.Add(new StaticMemberModel(bt, p.Name, p.PropertyType, isField: false)
                {
                    ReportSignature = sig,
                    IsReadable = getter != null && !getter.IsAbstract,
                });
                return;
            }
            bt.Properties.Add(new PropertyModel(bt, p.Name, p.PropertyType, getter != null, setter != null, isField: false) { ReportSignature = sig });
        }

        private static MethodModel KeyedAccessor(BoundType bt, MethodInfo accessor, MemberAccess access)
        {
            var m = MakeMethod(bt, accessor, accessor.Name, isCtor: false, isStatic: false);
            m.Access = access;
            bt.Methods.Add(m);
            return m;
        }

        private static void CollectField(BoundType bt, FieldInfo f)
        {
            string sig = Sig(bt, f.Name, DisplayNames.Of(f.FieldType));
            if (f.IsStatic)
            {
                bt.StaticMembers.Add(new StaticMemberModel(bt, f.Name, f.FieldType, isField: true) { ReportSignature = sig });
                return;
            }
            bool canWrite = !f.IsInitOnly && !f.IsLiteral && !(bt.IsStruct && IsReadOnlyStruct(bt.Clr));
            bt.Properties.Add(new PropertyModel(bt, f.Name, f.FieldType, canRead: true, canWrite, isField: true) { ReportSignature = sig });
        }

        /// <summary>A readable int Count on the type or one of its interfaces.</summary>
        private static bool HasCount(Type t) =>
            new[] { t }.Concat(t.GetInterfaces()).Any(x =>
                x.GetProperty("Count", BindingFlags.Public | BindingFlags.Instance) is { GetMethod.IsPublic: true } c
                && c.PropertyType.FullName == "System.Int32" && c.GetIndexParameters().Length == 0);

        private static bool IsReadOnlyStruct(Type t) =>
            t.GetCustomAttributesData().Any(a => a.AttributeType.FullName == "System.Runtime.CompilerServices.IsReadOnlyAttribute");

        private static bool IsInitOnly(MethodInfo setter) =>
            setter.ReturnParameter.GetRequiredCustomModifiers().Any(m => m.FullName == "System.Runtime.CompilerServices.IsExternalInit");

        private static string Sig(BoundType bt, string member, string signature, bool dotIncluded = false) =>
            bt.FullName + (dotIncluded ? member : "." + member) + "(" + signature + ")";
    }
}
