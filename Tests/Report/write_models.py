#!/usr/bin/env python3
"""Writes models for a report, always the same.

    write_models.py library FOLDER            some of every state, and with names that are no names
    write_models.py many FOLDER COUNT         ordinary ones, each in a folder of its own
"""

import os
import pathlib
import random
import struct
import sys

FAMILIES = (("pvrtc", "pvr"), ("etc", "pvr"), ("astc", "pvr"), ("dxt", "dds"))
NO_FLAGS = b"\0\0\0\0"

# Names that would do something if a page took them for more than text.
HOSTILE_NAMES = {
    "script": b"<script>window.pwned = 1</script>",
    "end of script": b"</script><script>window.pwned = 1</script><!--",
    "image": b"<img src=x onerror='window.pwned=1'>",
    "quotes": b"\"double\" 'single' `back` &amp; &lt;",
    "percent": b"100%s %n %3Cscript%3E ${window.pwned=1}",
    "invalid": b"\xff\xfe\xc3(\xed\xa0\x80.png",
    "right to left": "\u202egnp.\u05e9\u05dc\u05d5\u05dd.exe\u2066".encode(),
    "control": b"bell\x07 tab\t line\nend \x1b[31mred",
    "long": b"long" * 2500,
    "wide": ("\U0001f9f1" * 300).encode(),
    "json": b"\\u003c/script> \\x3c \xe2\x80\xa8 line separator",
    "prototype": b"__proto__",
}


def make_model(textures=(), probes=(), lightmaps=(), flags=NO_FLAGS, marker=1):
    """Returns a model of version 26 whose items have these names."""
    model = b"ZEK\0" + struct.pack("<4i", 26, marker, 0, len(textures))
    model += b"".join(name + b"\0" + struct.pack("<i", 1) + flags for name in textures)
    model += struct.pack("<i", len(probes))
    for name in probes:
        model += struct.pack("<i6fi", 128, 0, 2, 0, 8, 4, 8, 0) + flags + name + b"\0"
    model += struct.pack("<i", len(lightmaps))
    model += b"".join(name + b"\0" + flags for name in lightmaps)
    return model + struct.pack("<2i", 1, 0)


def write(folder, name, content=b"variant\n"):
    path = os.path.join(os.fsencode(folder), name)
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "wb") as file:
        file.write(content)


def write_texture_variants(folder, family, stems):
    name, extension = FAMILIES[family]
    for stem in stems:
        write(folder, b"tex_%s/%s.%s" % (name.encode(), stem, extension.encode()))


def write_cubemap(folder, family, probe, faces=range(6)):
    name, extension = FAMILIES[family]
    for face in faces:
        path = f"tex_reflection_cube_{name}\\{probe}\\reflection_cube_{face}.{extension}"
        write(folder, path.encode())


def write_hostile(folder):
    for title, name in HOSTILE_NAMES.items():
        model = make_model((name, b"plain.png"), (name,), (name,))
        write(folder, b"names/%s/model.zek" % title.encode(), model)
    # As names of folders and files the system takes neither a slash nor more than 255 bytes.
    for title, name in HOSTILE_NAMES.items():
        name = name.replace(b"/", b"_")[:200]
        if title != "wide":
            write(folder, b"folders/%s/%s.zek" % (name, name), make_model((b"a.png", b"b.png")))
    write(folder, b"names/many.zek", make_model([b"texture %d" % i for i in range(2000)]))


def write_library(folder):
    write_hostile(os.path.join(folder, "hostile"))
    complete = os.path.join(folder, "props/lamp")
    names = (b"shade.png", b"foot.png")
    write(complete, b"lamp.zek", make_model(names, flags=b"\1\1\1\1"))
    for family in range(4):
        write_texture_variants(complete, family, (b"000", b"001"))
    rooms = os.path.join(folder, "rooms")
    for room in ("hall", "tower", "cellar"):
        model = make_model((b"wall.png", b"floor.png"), (room.encode(),), (b"LightMap000.png",))
        write(rooms, f"{room}.zek".encode(), model)
    write_texture_variants(rooms, 3, (b"000", b"LightMap000", b"017"))
    write_cubemap(rooms, 0, "hall")
    write_cubemap(rooms, 0, "tower", range(5))
    write(rooms, b"tex_astc/001.pvr", b"")
    stale = make_model(names, flags=b"\1\0\7\0", marker=0)
    write(folder, b"props/chair/chair.zek", stale)
    write(folder, b"props/table/table.zek", make_model(names, flags=b"\0\0\0\1"))
    write(folder, b"props/empty/none.zek", make_model())
    for name, content in ((b"cut", stale[:40]), (b"text", b"no model\n"), (b"nothing", b"")):
        write(folder, b"broken/%s.zek" % name, content)


def write_many(folder, count):
    """Writes models with four to twelve items. What each has of variants depends on its group."""
    chance = random.Random(1)
    for i in range(count):
        group, kind = divmod(i % 400, 20)
        path = os.path.join(folder, f"group {group:02}/kind {kind:02}/model {i:05}")
        textures = [f"{kind:02}_{chance.choice(WORDS)}_{j}.png".encode() for j in range(chance.randint(3, 9))]
        probes = [b"Probe"] * (i % 3 == 0)
        lightmaps = [b"LightMap000.png", b"LightMap001.png"][: i % 3]
        if i % 97 == 0:
            write(path, b"model.zek", make_model(textures)[:-20])
            continue
        has = [chance.random() < share for share in (0.1, 0.3, 0.9, group / 20)]
        flags = bytes(has) if i % 5 else NO_FLAGS
        write(path, b"model.zek", make_model(textures, probes, lightmaps, flags))
        for family in (f for f in range(4) if has[f]):
            stems = [b"%03d" % j for j in range(len(textures))] + [name[:-4] for name in lightmaps]
            write_texture_variants(path, family, stems[: -1 if i % 7 == 0 else None])
            if probes:
                write_cubemap(path, family, "Probe")


WORDS = ("wall", "floor", "roof_tiles", "wood", "metal", "glass", "cloth", "leather", "concrete")


def main():
    what, folder = sys.argv[1:3]
    pathlib.Path(folder).mkdir()
    if what == "many":
        write_many(folder, int(sys.argv[3]))
    else:
        write_library(folder)


if __name__ == "__main__":
    main()
