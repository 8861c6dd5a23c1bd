#!/usr/bin/env python3
# SPDX-License-Identifier: MIT
"""Draws the library's bitmaps into res/bitmaps/. Run it after changing a shape or a colour here and
commit what it wrote. With --check it writes nothing and fails when a file differs from its drawing;
the tests do that.

  caption_buttons.bmp  132 x 56: cells of 22 x 14. Columns: normal, hot, pressed of an active window,
                       then of an inactive one. Rows: close, maximise, minimise, restore.
  radio_boxes.bmp       26 x 39: cells of 13 x 13. Columns: not chosen, chosen. Rows: at rest, in use
                       (held down or with the focus), disabled.
  spin_arrows.bmp       34 x 33: cells of 17 x 11. Columns: first arrow (up or left), second arrow.
                       Rows: normal, pressed, disabled.
"""
import os
import struct
import sys

BLACK = (0, 0, 0)
ACTIVE_CAPTION = (24, 24, 24)
INACTIVE_CAPTION = (57, 57, 57)
DARK = (34, 34, 34)
TEXT = (180, 180, 180)
FAINT = (86, 86, 86)
DISABLED = (107, 107, 107)
TEAL = (0, 182, 157)
PRESSED_GROUND = (98, 78, 78)
EDGE = (118, 118, 118)


class Picture:
    """A 24-bit picture; (0, 0) is the upper left corner."""

    def __init__(self, width, height, ground):
        self.width, self.height = width, height
        self.rows = [[ground] * width for _ in range(height)]

    def dot(self, x, y, colour):
        self.rows[y][x] = colour

    def fill(self, x, y, width, height, colour):
        for row in range(y, y + height):
            for column in range(x, x + width):
                self.dot(column, row, colour)

    def frame(self, x, y, width, height, colour):
        self.fill(x, y, width, 1, colour)
        self.fill(x, y + height - 1, width, 1, colour)
        self.fill(x, y, 1, height, colour)
        self.fill(x + width - 1, y, 1, height, colour)

    def file(self):
        """The bytes of its .bmp file."""
        stride = (self.width * 3 + 3) // 4 * 4
        data = b""
        for row in reversed(self.rows):
            line = b"".join(bytes((b, g, r)) for r, g, b in row)
            data += line.ljust(stride, b"\0")
        header = struct.pack("<IiiHHIIiiII", 40, self.width, self.height, 1, 24, 0, len(data),
                             2835, 2835, 0, 0)
        return struct.pack("<2sIHHI", b"BM", 54 + len(data), 0, 0, 54) + header + data


def close_cross(picture, x, y, colour):
    for i in range(8):
        picture.fill(x + 6 + i, y + 3 + i, 2, 1, colour)
        picture.fill(x + 13 - i, y + 3 + i, 2, 1, colour)


def maximise_box(picture, x, y, colour):
    picture.frame(x + 7, y + 3, 8, 8, colour)
    picture.fill(x + 7, y + 4, 8, 1, colour)


def minimise_bar(picture, x, y, colour):
    picture.fill(x + 7, y + 9, 8, 2, colour)


def restore_boxes(picture, x, y, colour):
    picture.frame(x + 9, y + 2, 7, 6, colour)
    picture.fill(x + 7, y + 5, 7, 6, picture.rows[y][x])
    picture.frame(x + 7, y + 5, 7, 6, colour)


def caption_buttons():
    picture = Picture(132, 56, ACTIVE_CAPTION)
    grounds = (ACTIVE_CAPTION, DARK, PRESSED_GROUND, INACTIVE_CAPTION, DARK, PRESSED_GROUND)
    signs = (TEXT, TEAL, TEXT, FAINT, TEAL, TEXT)
    drawings = (close_cross, maximise_box, minimise_bar, restore_boxes)
    for row, draw in enumerate(drawings):
        for column in range(6):
            x, y = column * 22, row * 14
            picture.fill(x, y, 22, 14, grounds[column])
            draw(picture, x, y, signs[column])
    return picture


def radio_boxes():
    picture = Picture(26, 39, DARK)
    shape = {0: (4, 9), 1: (2, 11), 2: (1, 12), 3: (1, 12), 4: (0, 13), 5: (0, 13), 6: (0, 13),
             7: (0, 13), 8: (0, 13), 9: (1, 12), 10: (1, 12), 11: (2, 11), 12: (4, 9)}
    looks = ((EDGE, BLACK, TEXT), (TEAL, BLACK, TEAL), (FAINT, DARK, DISABLED))
    for row, (edge, inside, mark) in enumerate(looks):
        for column in range(2):
            for y, (first, last) in shape.items():
                above = shape.get(y - 1, (13, 0))
                below = shape.get(y + 1, (13, 0))
                for x in range(first, last):
                    on_edge = (x in (first, last - 1) or not above[0] <= x < above[1]
                               or not below[0] <= x < below[1])
                    picture.dot(column * 13 + x, row * 13 + y, edge if on_edge else inside)
            if column == 1:
                picture.fill(13 + 5, row * 13 + 4, 3, 5, mark)
                picture.fill(13 + 4, row * 13 + 5, 5, 3, mark)
    return picture


def spin_arrows():
    picture = Picture(34, 33, DARK)
    looks = ((DARK, TEXT), (PRESSED_GROUND, TEXT), (DARK, DISABLED))
    for row, (ground, sign) in enumerate(looks):
        for column in range(2):
            x, y = column * 17, row * 11
            picture.fill(x, y, 17, 11, ground)
            for i in range(4):
                line = i if column == 0 else 3 - i
                picture.fill(x + 8 - line, y + 4 + i, 2 * line + 1, 1, sign)
    return picture


def main():
    folder = os.path.join(os.path.dirname(os.path.abspath(__file__)), "bitmaps")
    pictures = {"caption_buttons.bmp": caption_buttons(), "radio_boxes.bmp": radio_boxes(),
                "spin_arrows.bmp": spin_arrows()}
    os.makedirs(folder, exist_ok=True)
    for name, picture in pictures.items():
        path = os.path.join(folder, name)
        if sys.argv[1:] == ["--check"]:
            with open(path, "rb") as file:
                if file.read() != picture.file():
                    sys.exit(f"{path} is not what draw_bitmaps.py draws; run it")
        else:
            with open(path, "wb") as file:
                file.write(picture.file())


if __name__ == "__main__":
    main()
