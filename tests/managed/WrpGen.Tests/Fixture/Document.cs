using System;
using System.Collections.Generic;
using System.IO;

namespace Wrp.Fixture
{
    public enum SaveKind { NotDefined, Pptx, Pdf }

    public enum BigFlags : long { None = 0, High = 1L << 40 }

    public interface IComponent
    {
        IDocument Owner { get; }
    }

    public interface IDocument : IComponent, IDisposable
    {
        string Title { get; set; }
        IDisposable AsIDisposable { get; }
        IPage GetPage(int index);
        void Close();
        void Close(bool force);
    }

    public interface IPage
    {
        int Number { get; }
    }

    public sealed class Page : IPage
    {
        public Page(int number) { Number = number; }
        public int Number { get; }
    }

    /// <summary>Two constructors, overloads, a property of each bindable kind and members that cannot be bound yet.</summary>
    public class Document : IDocument
    {
        public Document() { }
        public Document(string path) { Title = path; }

        public string Title { get; set; }
        IDisposable IDocument.AsIDisposable => this;
        public IDocument Owner => this;
        public IPage GetPage(int index) => new Page(index);
        void IDocument.Close() { }
        void IDocument.Close(bool force) { }
        public void Dispose() { }

        public void Save(string path) { }
        public void Save(Stream stream) { }
        public void Save(string path, SaveKind kind) { }
        public int Save(byte[] data, int offset) => offset;

        public bool Flag { get; set; }
        public sbyte Int8 { get; set; }
        public byte UInt8 { get; set; }
        public short Int16 { get; set; }
        public ushort UInt16 { get; set; }
        public int Int32 { get; set; }
        public uint UInt32 { get; set; }
        public long Int64 { get; set; }
        public ulong UInt64 { get; set; }
        public float Single { get; set; }
        public double Double { get; set; }
        public char Letter { get; set; }
        public SaveKind Kind { get; set; }
        public BigFlags Flags { get; set; }
        public byte[] Data { get; set; }
        public Page FirstPage => new Page(1);
        public IPage LastPage => new Page(2);
        public Point Origin { get; set; }
        public int ReadOnlyCount => 3;
        public int Version { get; init; }
        public string Get3DName() => "3d";
        public string GetHTMLText() => "";

        public DateTime Created { get; set; }
        public DateTimeOffset Stamp { get; set; }
        public TimeSpan Elapsed { get; set; }
        public decimal Price { get; set; }
        public Guid Id { get; set; }
        public int? Maybe { get; set; }
        public object Tag { get; set; }
        public int[] Numbers { get; set; }
        public IList<int> Items { get; set; }
        public Action Callback { get; set; }
        public int this[int index] => index;
        public bool TryGet(out int value) { value = 0; return true; }
        public T Echo<T>(T value) => value;
        public Stream Open() => null;
        public event EventHandler Changed { add { } remove { } }

        public class Inner { }
    }

    public struct Point
    {
        public Point(int x, int y) { X = x; Y = y; }
        public int X { get; set; }
        public int Y { get; set; }
        public Point Offset(int dx, int dy) => new Point(X + dx, Y + dy);
    }

    /// <summary>Static fields, constants and static properties become class attributes.</summary>
    public static class Constants
    {
        public const int MaxSize = 10;
        public static readonly string ProductName = "fixture";
        public static Page FirstPage { get; } = new Page(1);
        public static int Twice(int value) => 2 * value;
        public static string Twice(string value) => value + value;
    }

    public class Box<T>
    {
        public T Value { get; set; }
    }
}
