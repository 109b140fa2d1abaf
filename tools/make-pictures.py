#!/usr/bin/env python3
"""Draws the gallery's raster pictures (needs Pillow): make-pictures.py [FOLDER]

The pictures are kept in the repository; run this after changing it.
"""
import math
import pathlib
import random
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


# Sky above, sky at the horizon, sun or moon, far hills, near hills, water or ground.
LANDSCAPES = {
    "dawn": ((88, 96, 160), (252, 190, 160), (255, 232, 190), (120, 104, 150), (70, 66, 104),
             (196, 150, 160)),
    "noon": ((60, 140, 226), (198, 228, 246), (255, 246, 200), (110, 160, 130), (52, 116, 70),
             (96, 170, 206)),
    "dusk": ((44, 36, 88), (246, 120, 70), (255, 210, 120), (96, 54, 84), (48, 30, 58),
             (170, 84, 76)),
    "night": ((8, 12, 34), (44, 62, 110), (236, 238, 246), (24, 34, 66), (12, 18, 38),
              (34, 50, 92)),
    "winter": ((150, 180, 214), (236, 242, 248), (255, 255, 244), (176, 194, 214), (222, 232, 240),
               (200, 214, 228)),
    "desert": ((92, 170, 222), (250, 226, 184), (255, 244, 214), (214, 160, 104), (190, 124, 70),
               (232, 192, 130)),
    "autumn": ((120, 168, 210), (240, 228, 206), (255, 240, 190), (204, 128, 58), (150, 74, 36),
               (120, 142, 150)),
    "fjord": ((70, 110, 150), (206, 220, 222), (250, 246, 230), (84, 112, 122), (40, 66, 76),
              (76, 116, 132)),
}


def blended(first, second, t):
    return tuple(round(a + (b - a) * t) for a, b in zip(first, second))


def ridge(source, width, base, height, steps):
    """A jagged line from edge to edge."""
    points = [(0, base - height * source.random())]
    for step in range(1, steps):
        rise = height * (source.random() if step % 2 else source.random() * .3)
        points.append((width * (step + source.uniform(-.3, .3)) / steps, base - rise))
    return points + [(width, base - height * source.random())]


def landscape(name, width, height):
    """Sky, sun, two ranges of hills and the ground in front of them."""
    top, horizon, sun, far, near, ground = LANDSCAPES[name]
    source = random.Random(name)
    big_width, big_height = width * 4, height * 4
    shore = round(big_height * .7)
    sky = Image.new("RGB", (1, big_height))
    for y in range(big_height):
        colour = blended(top, horizon, y / shore) if y < shore else \
            blended(ground, blended(ground, near, .6), (y - shore) / (big_height - shore))
        sky.putpixel((0, y), colour)
    picture = sky.resize((big_width, big_height))
    draw = ImageDraw.Draw(picture)
    x, radius = big_width * source.uniform(.2, .8), big_height * .08
    y = big_height * source.uniform(.16, .3)
    draw.ellipse((x - radius, y - radius, x + radius, y + radius), fill=sun)
    if name == "night":
        for _ in range(40):
            star = (source.uniform(0, big_width), source.uniform(0, big_height * .5))
            draw.ellipse((star[0] - 2, star[1] - 2, star[0] + 2, star[1] + 2), fill=sun)
    for colour, base, rise, steps in ((far, shore, .34, 9), (near, shore + big_height * .06, .2, 13)):
        line = ridge(source, big_width, base - big_height * .05, big_height * rise, steps)
        draw.polygon(line + [(big_width, base), (0, base)], fill=colour)
    for _ in range(24):
        at = source.uniform(shore + big_height * .08, big_height)
        left, length = source.uniform(0, big_width), source.uniform(.02, .12) * big_width
        draw.line((left, at, left + length, at), fill=blended(ground, sun, .3), width=4)
    return picture.resize((width, height), Image.LANCZOS)


def ball(frame, frames, size):
    """A striped ball that bounces and turns, with its shadow."""
    big = size * 4
    picture = Image.new("RGBA", (big, big), (0, 0, 0, 0))
    draw = ImageDraw.Draw(picture)
    phase = frame / frames
    lift = math.sin(math.pi * phase)  # 0 on the ground
    radius = big * .2
    ground = big * .9
    squash = 1 - .22 * (1 - lift) ** 4
    half_width, half_height = radius / squash, radius * squash
    middle = (big / 2, ground - half_height - lift * big * .46)
    shadow = radius * (1 - .45 * lift)
    draw.ellipse((big / 2 - shadow, ground - shadow * .16, big / 2 + shadow, ground + shadow * .16),
                 fill=(31, 41, 51, round(120 - 70 * lift)))
    box = (middle[0] - half_width, middle[1] - half_height, middle[0] + half_width,
           middle[1] + half_height)
    for part in range(6):
        begin = 360 * phase + part * 60
        colour = (0, 125, 255, 255) if part % 2 else (255, 255, 255, 255)
        draw.pieslice(box, begin, begin + 60, fill=colour)
    draw.ellipse(box, outline=(0, 78, 168, 255), width=big // 48)
    return picture.resize((size, size), Image.LANCZOS).quantize(
        96, method=Image.Quantize.FASTOCTREE)


def frames(folder, count=24):
    folder.mkdir(parents=True, exist_ok=True)
    for number in range(count):
        ball(number, count, 128).save(folder / f"ball-{number + 1:02}.png", optimize=True)
        ball(number, count, 192).save(folder / f"ball-{number + 1:02}@150.png", optimize=True)


def photographs(folder):
    """Pictures of every format, one that lies on its side, and files that are none."""
    folder.mkdir(parents=True, exist_ok=True)
    landscape("fjord", 480, 300).save(folder / "fjord.jpg", quality=86)
    landscape("dawn", 240, 150).save(folder / "dawn.jpg", quality=86)
    landscape("noon", 200, 200).save(folder / "noon.jpg", quality=86)
    landscape("dusk", 240, 150).convert("P", palette=Image.ADAPTIVE, colors=64).save(
        folder / "dusk.png", optimize=True)
    landscape("night", 300, 120).convert("P", palette=Image.ADAPTIVE, colors=64).save(
        folder / "night.png", optimize=True)
    landscape("winter", 120, 75).save(folder / "winter.bmp")
    landscape("desert", 160, 100).convert("P", palette=Image.ADAPTIVE, colors=32).save(
        folder / "desert.gif")
    landscape("autumn", 160, 100).save(folder / "autumn.tif", compression="tiff_lzw")

    # A camera that was held upright says so in the file.
    orientation = Image.Exif()
    orientation[0x0112] = 6
    landscape("dusk", 150, 240).rotate(90, expand=True).save(
        folder / "upright.jpg", quality=86, exif=orientation)

    whole = (folder / "dawn.jpg").read_bytes()
    (folder / "no-header.jpg").write_bytes(b"\xff\xd8" + whole[len(whole) // 2:])
    whole = (folder / "dusk.png").read_bytes()
    (folder / "truncated.png").write_bytes(whole[:len(whole) // 2])
    (folder / "too-short.png").write_bytes(whole[:20])
    (folder / "empty.gif").write_bytes(b"")
    (folder / "text.jpg").write_text("A text with the wrong extension.\n")
    (folder / "readme.txt").write_text("A text among pictures.\n")


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
    frames(skin / "frames")
    photographs(skin / "photographs")


if __name__ == "__main__":
    main()
