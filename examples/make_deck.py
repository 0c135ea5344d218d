"""The demo: a deck made from Python and saved as PPTX."""
import sys

import orvane.folaro as f


def main(path):
    pres = f.Presentation()
    layout = pres.layout_slides.get_by_type(f.SlideLayoutType.TITLE) if hasattr(pres.layout_slides, "get_by_type") else None
    print("layouts:", pres.layout_slides.count, "masters:", pres.masters.count)
    pres.save(path, f.SaveFormat.PPTX)
    again = f.Presentation(path)
    print("saved", path, "with", again.slides.count, "slides")


if __name__ == "__main__":
    main(sys.argv[1] if len(sys.argv) > 1 else "demo.pptx")
