#!/usr/bin/env python3
"""Draws the gallery's raster pictures (needs Pillow): make-pictures.py [FOLDER]

The pictures are kept in the repository; run this after changing it.
"""
import pathlib
import sys

from PIL import Image, ImageDraw

SCALES = (100, 125, 150, 175, 200, 225)
OVERSAMPLING = 8


def rounded_button(scale, top, bottom):
    width, height = 160 * scale // 100, 40 * scale // 100
    big = (width * OVERSAMPLING, height * OVERSAMPLING)
    mask = Image.new("L", big, 0)
    ImageDraw.Draw(mask).rounded_rectangle(
        (0, 0, big[0] - 1, big[1] - 1), radius=big[1] // 2, fill=255)
    fade = Image.new("RGB", (1, height))
    for y in range(height):
        t = y / max(1, height - 1)
        fade.putpixel((0, y), tuple(round(a + (b - a) * t) for a, b in zip(top, bottom)))
    picture = fade.resize((width, height)).convert("RGBA")
    picture.putalpha(mask.resize((width, height), Image.LANCZOS))
    return picture


def photograph(width, height):
    """A landscape: sky, sun, two ranges of hills."""
    picture = Image.new("RGB", (width, height))
    for y in range(height):
        t = y / height
        for x in range(width):
            picture.putpixel((x, y), (round(90 + 150 * t), round(160 + 70 * t), round(230 - 20 * t)))
    draw = ImageDraw.Draw(picture)
    draw.ellipse((width * .68, height * .12, width * .68 + height * .25, height * .37),
                 fill=(255, 236, 170))
    draw.polygon([(0, height * .75), (width * .3, height * .4), (width * .55, height * .7),
                  (width * .8, height * .45), (width, height * .7), (width, height), (0, height)],
                 fill=(96, 138, 152))
    draw.polygon([(0, height * .85), (width * .45, height * .62), (width, height * .9),
                  (width, height), (0, height)], fill=(58, 104, 92))
    return picture


def panel(scale=1):
    """A frame for nine-grid drawing: round corners of 12 pixels, a soft border."""
    size = 48 * scale
    big = size * OVERSAMPLING
    picture = Image.new("RGBA", (big, big), (0, 0, 0, 0))
    draw = ImageDraw.Draw(picture)
    draw.rounded_rectangle((0, 0, big - 1, big - 1), radius=big // 4, fill=(0, 125, 255, 255))
    inset = big // 24
    draw.rounded_rectangle((inset, inset, big - 1 - inset, big - 1 - inset), radius=big // 5,
                           fill=(232, 243, 255, 255))
    return picture.resize((size, size), Image.LANCZOS)


def tile():
    """Two tones of a checkered tile."""
    picture = Image.new("RGB", (16, 16), (255, 255, 255))
    draw = ImageDraw.Draw(picture)
    draw.rectangle((0, 0, 7, 7), fill=(214, 228, 245))
    draw.rectangle((8, 8, 15, 15), fill=(214, 228, 245))
    return picture


def states(width, height):
    """Four columns: normal, hot, pushed, disabled."""
    picture = Image.new("RGBA", (width * 4, height), (0, 0, 0, 0))
    fills = ((240, 243, 247), (222, 236, 252), (189, 217, 250), (246, 246, 246))
    edges = ((196, 203, 212), (0, 125, 255), (0, 98, 204), (222, 222, 222))
    for column in range(4):
        big = Image.new("RGBA", (width * OVERSAMPLING, height * OVERSAMPLING), (0, 0, 0, 0))
        draw = ImageDraw.Draw(big)
        box = (0, 0, big.width - 1, big.height - 1)
        draw.rounded_rectangle(box, radius=6 * OVERSAMPLING, fill=fills[column] + (255,),
                               outline=edges[column] + (255,), width=OVERSAMPLING)
        picture.paste(big.resize((width, height), Image.LANCZOS), (column * width, 0))
    return picture


def main():
    skin = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else
                        pathlib.Path(__file__).parent.parent / "gallery" / "skin")
    buttons = skin / "drawable" / "corvane_common"
    buttons.mkdir(parents=True, exist_ok=True)
    looks = {
        "normal": ((26, 140, 255), (0, 118, 240)),
        "hover": ((61, 158, 255), (20, 135, 250)),
        "press": ((0, 104, 214), (0, 92, 190)),
        "disable": ((166, 206, 247), (153, 196, 242)),
    }
    for look, (top, bottom) in looks.items():
        for scale in SCALES:
            suffix = "" if scale == 100 else f"@{scale}"
            rounded_button(scale, top, bottom).save(
                buttons / f"btn_blue_round_{look}{suffix}.png", optimize=True)
    pictures = skin / "pictures"
    pictures.mkdir(parents=True, exist_ok=True)
    photo = photograph(240, 150)
    photo.save(pictures / "hills.png", optimize=True)
    photo.save(pictures / "hills.jpg", quality=88)
    photo.resize((120, 75), Image.LANCZOS).save(pictures / "hills.bmp")
    photo.convert("P", palette=Image.ADAPTIVE, colors=64).save(pictures / "hills.gif")
    panel().save(pictures / "panel.png", optimize=True)
    tile().save(pictures / "tile.png", optimize=True)
    states(96, 32).save(pictures / "states.png", optimize=True)


if __name__ == "__main__":
    main()
