using System.Collections.Generic;
using Orvane.WrpGen.Model;

namespace Orvane.WrpGen.Emit
{
    /// <summary>
    /// The .pyi printer: the Python type of a binding kind as one stub module
    /// writes it, collecting the modules the stub must import.
    /// </summary>
    internal sealed class PyiTypes
    {
        private readonly string _module;
        private readonly ISet<string> _imports;

        public PyiTypes(string module, ISet<string> imports) { _module = module; _imports = imports; }

        public string Of(TypeRef t, bool nullable)
        {
            switch (t.Kind)
            {
                case BindKind.Void: return "None";
                case BindKind.Bool: return "bool";
                case BindKind.Float or BindKind.Double: return "float";
                case BindKind.Char or BindKind.String: return nullable && t.Kind == BindKind.String ? "typing.Optional[str]" : "str";
                case BindKind.Bytes: return nullable ? "typing.Optional[bytes]" : "bytes";
                case BindKind.Disposable or BindKind.Variant: return "typing.Any";
                case BindKind.DateTime or BindKind.DateTimeOffset:
                    _imports.Add("datetime");
                    return "datetime.datetime";
                case BindKind.TimeSpan:
                    _imports.Add("datetime");
                    return "datetime.timedelta";
                case BindKind.Decimal:
                    _imports.Add("decimal");
                    return "decimal.Decimal";
                case BindKind.Guid:
                    _imports.Add("uuid");
                    return "uuid.UUID";
                case BindKind.Nullable: return $"typing.Optional[{Of(t.Element!, false)}]";
                case BindKind.ByRef: return "typing.List[typing.Any]";
                case BindKind.Stream: return "typing.BinaryIO";
                case BindKind.Collection:
                    {
                        // Typed collections name their element; the untyped ones hold anything.
                        string item = t.Element != null ? Of(t.Element, false) : "typing.Any";
                        return t.Collection switch
                        {
                            CollectionKind.IEnumerator or CollectionKind.GenericEnumerator => $"typing.Iterator[{item}]",
                            CollectionKind.GenericEnumerable => $"typing.Iterable[{item}]",
                            _ => $"typing.Sequence[{item}]",
                        };
                    }
                case BindKind.Object:
                case BindKind.SiblingObject:
                    {
                        string module = t.Bound?.Module.PyName ?? t.Sibling!.PythonModule;
                        string name = t.Bound?.Name ?? t.Sibling!.Name;
                        string full = module == _module ? name : module + "." + name;
                        if (module != _module) _imports.Add(module);
                        return nullable ? $"typing.Optional[{Quote(full)}]" : Quote(full);
                    }
                default: return "int";
            }
        }

        private static string Quote(string s) => "\"" + s + "\"";
    }
}
