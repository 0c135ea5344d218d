using System;
using System.Collections.Generic;
using System.Linq;
using System.Reflection;
using Orvane.WrpGen.Passes;

namespace Orvane.WrpGen.Model
{
    /// <summary>
    /// Reads the public surface of the input assembly into the model: which types
    /// are bound and which are not, and every public member in declaration order.
    /// Members keep their metadata order because that is the order overloads are tried.
    /// </summary>
    internal sealed class ModelBuilder
    {
        private const BindingFlags Declared = BindingFlags.Public | BindingFlags.DeclaredOnly;
        private readonly BindingModel _model;
        private readonly Dictionary<Type, BoundType> _bound = new();
        private readonly Dictionary<Type, SiblingType> _siblings = new();
        private TypeClassifier _classifier = null!;
        private Assembly _input = null!;

        private ModelBuilder(BindingModel model) { _model = model; }

        public static BindingModel Build(Assembly input, IReadOnlyList<(Assembly Assembly, string PythonModule)> siblings,
                                         string pythonModule, string? rootNamespace, string proxyAssembly, string company)
        {
            var exported = input.GetExportedTypes();
            string root = rootNamespace ?? Naming.CommonNamespace(
                exported.Where(t => !t.IsNested && !string.IsNullOrEmpty(t.Namespace)).Select(t => t.Namespace!));
            var model = new BindingModel(pythonModule, root, proxyAssembly, company);
            var builder = new ModelBuilder(model) { _input = input };
            builder.CollectSiblings(siblings);
            builder.CollectTypes(exported);
            return model;
        }

        private void CollectSiblings(IReadOnlyList<(Assembly Assembly, string PythonModule)> siblings)
        {
            foreach (var (assembly, pyModule) in siblings)
            {
                var types = assembly.GetExportedTypes()
                    .Where(t => !t.IsNested && !t.IsGenericTypeDefinition && !t.IsEnum && !string.IsNullOrEmpty(t.Namespace)
                                && (t.IsClass || t.IsValueType || t.IsInterface) && !IsDelegateType(t))
                    .ToList();
                string ns = Naming.CommonNamespace(types.Select(t => t.Namespace!));
                foreach (var t in types.OrderBy(t => t.FullName, StringComparer.Ordinal))
                {
                    var kind = t.IsInterface ? TypeKind.Interface : t.IsValueType ? TypeKind.Struct : TypeKind.Class;
                    var s = new SiblingType(t, t.FullName!, t.Name, Naming.Id(t.FullName!),
                                            Naming.ModulePath(pyModule, ns, t.Namespace!), kind) { RootModule = pyModule };
                    _siblings[t] = s;
                    _model.SiblingTypes.Add(s);
                }
            }
        }

        private void CollectTypes(Type[] exported)
        {
            foreach (var t in exported.OrderBy(t => t.FullName, StringComparer.Ordinal))
            {
                string name = TypeClassifier.DisplayName(t);
                if (t.IsNested) { _model.Skipped.Add(new SkippedEntry(name, "unsupported")); continue; }
                if (t.IsGenericTypeDefinition) { _model.Skipped.Add(new SkippedEntry(name, "generic")); continue; }
                if (IsDelegateType(t)) { _model.Skipped.Add(new SkippedEntry(name, "delegate")); continue; }
                string ns = t.Namespace ?? "";
                if (ns != _model.RootNamespace && !ns.StartsWith(_model.RootNamespace + ".", StringComparison.Ordinal))
                { _model.Skipped.Add(new SkippedEntry(name, "unsupported")); continue; }
                TypeKind kind = t.IsEnum ? TypeKind.Enum : t.IsInterface ? TypeKind.Interface
                              : t.IsValueType ? TypeKind.Struct : TypeKind.Class;
                var bt = new BoundType(t, kind);
                _bound[t] = bt;
                _model.Types.Add(bt);
            }
            _classifier = new TypeClassifier(_bound, _siblings);
            foreach (var bt in _model.Types)
            {
                if (bt.IsEnum)
                    CollectEnum(bt);
                else
                    CollectObject(bt);
            }
        }

        private static bool IsDelegateType(Type t) =>
            t.BaseType?.FullName == "System.MulticastDelegate" || t.BaseType?.FullName == "System.Delegate";

        private void CollectEnum(BoundType bt)
        {
            var underlying = TypeClassifier.ScalarKind(bt.Clr.GetEnumUnderlyingType().FullName) ?? BindKind.Int32;
            bt.EnumUnderlying = underlying;
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
            var typedEnumerable = t.GetInterfaces().FirstOrDefault(i =>
                i.IsGenericType && i.GetGenericTypeDefinition().FullName == "System.Collections.Generic.IEnumerable`1");
            if (typedEnumerable != null)
                bt.EnumerableElement = _classifier.Classify(typedEnumerable.GetGenericArguments()[0]);

            if (!bt.IsInterface && !(t.IsAbstract && !t.IsSealed) && !(t.IsAbstract && t.IsSealed))
            {
                foreach (var c in t.GetConstructors(BindingFlags.Public | BindingFlags.Instance))
                    bt.Constructors.Add(MakeMethod(bt, c, bt.Name, isCtor: true, isStatic: false));
                if (bt.IsStruct && !bt.Constructors.Any(c => c.Parameters.Count == 0))
                    bt.Constructors.Add(new MethodModel(bt, bt.Name, isCtor: true, isStatic: false, new List<ParameterModel>(),
                        new TypeRef(BindKind.Void, typeof(void))) { IsImplicitDefault = true, ReportSignature = Sig(bt, "..ctor", "", dotIncluded: true) });
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
                            Report(bt, m, "unsupported");
                        continue;  // accessors are bound through their property or event
                    }
                    string key = m.Name + "(" + string.Join(",", m.GetParameters().Select(p => p.ParameterType.FullName)) + ")";
                    if (!methodKeys.Add(key))
                        continue;  // overridden or hidden by a more derived level
                    var mm = MakeMethod(bt, m, m.Name, isCtor: false, isStatic: m.IsStatic);
                    if (m.IsGenericMethodDefinition)
                        mm.SkipKind = "generic";
                    else if (m.IsStatic && m.IsAbstract)
                        mm.SkipKind = "unsupported";
                    bt.Methods.Add(mm);
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
                    _model.Skipped.Add(new SkippedEntry(Sig(bt, e.Name, TypeClassifier.DisplayName(e.EventHandlerType!)), "delegate"));
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

        private MethodModel MakeMethod(BoundType bt, MethodBase mb, string name, bool isCtor, bool isStatic)
        {
            var ps = mb.GetParameters();
            var parameters = ps.Select((p, i) => new ParameterModel(string.IsNullOrEmpty(p.Name) ? $"arg{i}" : p.Name!,
                                                                    _classifier.Classify(p.ParameterType, p.IsOut))).ToList();
            var result = mb is MethodInfo mi ? _classifier.Classify(mi.ReturnType) : new TypeRef(BindKind.Void, typeof(void));
            return new MethodModel(bt, name, isCtor, isStatic, parameters, result)
            {
                ReportSignature = Sig(bt, isCtor ? "..ctor" : "." + name,
                                      string.Join(", ", ps.Select(p => TypeClassifier.DisplayName(p.ParameterType))), dotIncluded: true),
            };
        }

        private void CollectProperty(BoundType bt, PropertyInfo p)
        {
            var getter = p.GetMethod is { IsPublic: true } g ? g : null;
            var setter = p.SetMethod is { IsPublic: true } s && !IsInitOnly(s) ? s : null;
            if (getter == null && setter == null)
                return;
            var index = p.GetIndexParameters();
            if (index.Length == 1 && index[0].ParameterType.FullName == "System.Int32" && getter is { IsStatic: false }
                && bt.Indexer == null && HasCount(bt.Clr))
            {
                var element = _classifier.Classify(p.PropertyType);
                if (element.Kind is BindKind.Object or BindKind.SiblingObject)
                {
                    bt.Indexer = new IndexerModel(element, setter != null);
                    return;
                }
            }
            if (index.Length > 0)
            {
                // Any other indexer is reached by key: its accessors become get_item and set_item.
                if (getter is { IsStatic: false })
                    bt.Methods.Add(KeyedAccessor(bt, getter, MemberAccess.IndexGet));
                if (setter is { IsStatic: false })
                    bt.Methods.Add(KeyedAccessor(bt, setter, MemberAccess.IndexSet));
                return;
            }
            var type = _classifier.Classify(p.PropertyType);
            string sig = Sig(bt, p.Name, TypeClassifier.DisplayName(p.PropertyType));
            if ((getter ?? setter)!.IsStatic)
            {
                bt.StaticMembers.Add(new StaticMemberModel(bt, p.Name, type, isField: false)
                {
                    ReportSignature = sig,
                    // Static members are read once at import: without a public,
                    // concrete getter there is nothing to read.
                    SkipKind = getter == null || getter.IsAbstract ? "unsupported" : null,
                });
                return;
            }
            bt.Properties.Add(new PropertyModel(bt, p.Name, type, getter != null, setter != null, isField: false) { ReportSignature = sig });
        }

        private MethodModel KeyedAccessor(BoundType bt, MethodInfo accessor, MemberAccess access)
        {
            var m = MakeMethod(bt, accessor, accessor.Name, isCtor: false, isStatic: false);
            m.Access = access;
            return m;
        }

        private void CollectField(BoundType bt, FieldInfo f)
        {
            var type = _classifier.Classify(f.FieldType);
            string sig = Sig(bt, f.Name, TypeClassifier.DisplayName(f.FieldType));
            if (f.IsStatic)
            {
                bt.StaticMembers.Add(new StaticMemberModel(bt, f.Name, type, isField: true) { ReportSignature = sig });
                return;
            }
            bool canWrite = !f.IsInitOnly && !f.IsLiteral && !(bt.IsStruct && IsReadOnlyStruct(bt.Clr));
            bt.Properties.Add(new PropertyModel(bt, f.Name, type, canRead: true, canWrite, isField: true) { ReportSignature = sig });
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

        private void Report(BoundType bt, MethodInfo m, string kind) =>
            _model.Skipped.Add(new SkippedEntry(
                Sig(bt, "." + m.Name, string.Join(", ", m.GetParameters().Select(p => TypeClassifier.DisplayName(p.ParameterType))), dotIncluded: true),
                kind));

        private static string Sig(BoundType bt, string member, string signature, bool dotIncluded = false) =>
            bt.FullName + (dotIncluded ? member : "." + member) + "(" + signature + ")";
    }
}
