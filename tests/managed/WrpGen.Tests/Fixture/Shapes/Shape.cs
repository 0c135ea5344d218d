namespace Wrp.Fixture.Shapes
{
    public class Shape
    {
        public float X { get; set; }
        public void Move(float dx, float dy) { X += dx; }
    }

    public sealed class Rectangle : Shape, IComponent
    {
        public Rectangle() { }
        public void Move(int steps) { X += steps; }
        public IDocument Owner => null;
    }
}
