#!/usr/bin/env python3
"""Writes the scene (scene.ppm, fewer than 256 colours) as a palette PNG and a palette TIFF,
each pixel an index into a table of the scene's colours, with the resolution of 96 dpi:
the palette forms of the test photos, lossless, which no converter at hand writes."""
import struct
import zlib

ppm = open("scene.ppm", "rb").read()
lines = ppm.split(b"\n", 4)
header = [line for line in lines[:4] if not line.startswith(b"#")]
width, height = (int(n) for n in header[1].split())
pixels = ppm[-width * height * 3 :]
colours = sorted({pixels[i : i + 3] for i in range(0, len(pixels), 3)})
index = {c: n for n, c in enumerate(colours)}
indices = bytes(index[pixels[i : i + 3]] for i in range(0, len(pixels), 3))


def chunk(kind, data):
    return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))


rows = b"".join(b"\0" + indices[y * width : (y + 1) * width] for y in range(height))
png = b"\x89PNG\r\n\x1a\n"
png += chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 3, 0, 0, 0))
png += chunk(b"PLTE", b"".join(colours))
png += chunk(b"pHYs", struct.pack(">IIB", 3780, 3780, 1))  # 96.012 dpi
png += chunk(b"IDAT", zlib.compress(rows))
png += chunk(b"IEND", b"")
open("photo-palette.png", "wb").write(png)

# Little-endian TIFF: header, the strip, the colour map (256 entries of 16 bits per
# channel), the resolution, then the directory.
cmap = [0] * 768
for n, c in enumerate(colours):
    for k in range(3):
        cmap[k * 256 + n] = c[k] * 257
strip_at = 8
cmap_at = strip_at + len(indices)
res_at = cmap_at + 2 * 768
ifd_at = res_at + 8
entries = [
    (256, 3, 1, width), (257, 3, 1, height), (258, 3, 1, 8), (259, 3, 1, 1),
    (262, 3, 1, 3), (273, 4, 1, strip_at), (277, 3, 1, 1), (278, 3, 1, height),
    (279, 4, 1, len(indices)), (282, 5, 1, res_at), (283, 5, 1, res_at), (296, 3, 1, 2),
    (320, 3, 768, cmap_at),
]
tiff = b"II*\0" + struct.pack("<I", ifd_at) + indices
tiff += struct.pack("<768H", *cmap) + struct.pack("<II", 96, 1)
tiff += struct.pack("<H", len(entries))
for tag, kind, count, value in entries:
    if kind == 3 and count == 1:
        tiff += struct.pack("<HHIHH", tag, kind, count, value, 0)
    else:
        tiff += struct.pack("<HHII", tag, kind, count, value)
tiff += struct.pack("<I", 0)
open("photo-palette.tif", "wb").write(tiff)
