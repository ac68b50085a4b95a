"""What the scripts of the sample projects share: textures, models, objects, and the files that hold them.

Scenes, prefabs and projects hold what the program itself would save, to the byte."""
import math
import struct
import sys
import zlib
from pathlib import Path

# Where the projects lie: beside this file, or in the folder that the script is given.
SAMPLES = Path(sys.argv[1]) if len(sys.argv) > 1 else Path(__file__).parent.resolve()
IMPORTED = "Files\\imported"


# Textures.

SIZE = 64  # in pixels, unless said otherwise


def write_png(path, color_at, width=SIZE, height=SIZE):
    """color_at(x, y) gives red, green and blue as they are seen: the program shows a texture with red and blue
    exchanged, so they are exchanged here first."""
    def stored(x, y):
        red, green, blue = color_at(x, y)
        return bytes((blue, green, red))

    rows = b"".join(b"\0" + b"".join(stored(x, y) for x in range(width)) for y in range(height))

    def chunk(kind, data):
        return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

    header = struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)
    path.write_bytes(b"\x89PNG\r\n\x1a\n" + chunk(b"IHDR", header) + chunk(b"IDAT", zlib.compress(rows, 9)) +
                     chunk(b"IEND", b""))


def painted(shape, color_at, width, height):
    """The picture of a model that is stretched over it: color_at(right, up, x, y) in the coordinates of the shape. A
    face shows it from the front, from the side or from above, whichever it looks to most."""
    (middle_x, middle_y, _), half = bounds(shape)

    def color(x, y):
        return color_at(middle_x + (2 * x / (width - 1) - 1) * half, middle_y + (1 - 2 * y / (height - 1)) * half, x, y)

    return color


def grain(x, y):
    """A number from 0 to 255 that looks random but is the same every time."""
    n = (x * 374761393 + y * 668265263) & 0xFFFFFFFF
    n = ((n ^ n >> 13) * 1274126177) & 0xFFFFFFFF
    return (n ^ n >> 16) & 0xFF


def shaded(color, light):
    return tuple(max(0, min(255, int(c * light))) for c in color)


def mixed(a, b, share_of_b):
    return tuple(x + (y - x) * share_of_b for x, y in zip(a, b))


def between(stops, at):
    """The colour at a place among (place, colour), which stand in rising order."""
    for (low, low_color), (high, high_color) in zip(stops, stops[1:]):
        if at <= high:
            return mixed(low_color, high_color, (at - low) / (high - low))
    return stops[-1][1]


# Models: vertices, and faces that name them from 0 on. A face is seen from the side from which it turns like a
# clock's hands.

def write_obj(path, vertices, faces):
    lines = ["# Made for the sample project.", f"o {path.stem}"]
    lines += [f"v {x:.5f} {y:.5f} {z:.5f}" for x, y, z in vertices]
    lines += ["f " + " ".join(str(index + 1) for index in face) for face in faces]
    path.write_text("\n".join(lines) + "\n", newline="\n")


def turned(profile, segments):
    """A profile of (radius, height) from the bottom up, turned around the y axis. Its ends lie on the axis."""
    vertices, faces = [], []
    rings = profile[1:-1]
    for radius, height in rings:
        for i in range(segments):
            a = 2 * math.pi * i / segments
            vertices.append((math.cos(a) * radius, height, math.sin(a) * radius))
    base, top = len(vertices), len(vertices) + 1
    vertices += [(0, profile[0][1], 0), (0, profile[-1][1], 0)]
    last = (len(rings) - 1) * segments
    for i in range(segments):
        j = (i + 1) % segments
        for low in range(0, last, segments):
            high = low + segments
            faces.append((low + i, high + i, high + j, low + j))
        faces += [(last + i, top, last + j), (base, i, j)]
    return vertices, faces


def reshaped(shape, move):
    """Each vertex moved on its own. A move that mirrors would turn the faces inside out."""
    vertices, faces = shape
    return [move(*vertex) for vertex in vertices], faces


def joined(*shapes):
    vertices, faces = [], []
    for more_vertices, more_faces in shapes:
        faces += [tuple(len(vertices) + index for index in face) for face in more_faces]
        vertices += more_vertices
    return vertices, faces


def outward(vertices, faces):
    """Turns the faces of a shape without hollows so that they are seen from outside."""
    middle = [sum(axis) / len(vertices) for axis in zip(*vertices)]

    def turned_out(face):
        a, b, c = ([p - q for p, q in zip(vertices[i], middle)] for i in face[:3])
        u, v = [q - p for p, q in zip(a, b)], [q - p for p, q in zip(a, c)]
        n = (u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2], u[0] * v[1] - u[1] * v[0])
        return face if sum(p * q for p, q in zip(n, a)) > 0 else face[::-1]

    return vertices, [turned_out(face) for face in faces]


def bounds(shape):
    """The middle of a shape, and half of its longest extent: what the program takes off when it loads a model."""
    reach = [(min(axis), max(axis)) for axis in zip(*shape[0])]
    return tuple((low + high) / 2 for low, high in reach), max(high - low for low, high in reach) / 2


def as_loaded(shape):
    """A shape as the program holds it: around the origin, two units long."""
    (x, y, z), half = bounds(shape)
    return reshaped(shape, lambda a, b, c: ((a - x) / half, (b - y) / half, (c - z) / half))


def posed(shape, at, scale=(1.0, 1.0, 1.0), rotation=(0.0, 0.0, 0.0)):
    """A shape where an object with this transform would show it."""
    (sx, cx), (sy, cy), (sz, cz) = ((math.sin(a), math.cos(a)) for a in rotation)

    def move(x, y, z):
        x, y, z = x * scale[0], y * scale[1], z * scale[2]
        x, y = x * cz - y * sz, x * sz + y * cz
        y, z = y * cx - z * sx, y * sx + z * cx
        x, z = x * cy + z * sy, z * cy - x * sy
        return x + at[0], y + at[1], z + at[2]

    return reshaped(shape, move)


def cube():
    """The built-in Cube."""
    corners = [(x, y, z) for x in (-1.0, 1.0) for y in (-1.0, 1.0) for z in (-1.0, 1.0)]
    return outward(corners, [(0, 1, 3, 2), (4, 5, 7, 6), (0, 1, 5, 4), (2, 3, 7, 6), (0, 2, 6, 4), (1, 3, 7, 5)])


def cylinder(segments=12):
    return turned([(0, -1), (1, -1), (1, 1), (0, 1)], segments)


def sphere(segments=12, bands=8):
    return turned([(math.sin(math.pi * i / bands), -math.cos(math.pi * i / bands)) for i in range(bands + 1)],
                  segments)


# Objects.

# The columns of an object line behind the "O", in their order, with what a new object has.
COLUMNS = {
    "name": "", "position": (0.0, 0.0, 0.0), "rotation": (0.0, 0.0, 0.0), "scale": (1.0, 1.0, 1.0),
    "mesh": "builtin:Cube", "has_animation": 0, "parent": -1, "is_entity": 0, "is_camera": 0, "is_light": 0,
    "has_shape": 1, "has_color": 0, "transform_expanded": 1, "shape_expanded": 1, "color_expanded": 1,
    "animation_expanded": 1, "animation_type": 0, "animation_speed": 1.0, "script_count": 0, "color": 0xC4CD4E,
    "roughness": 0.72, "gloss": 0.18, "color_wheel_expanded": 0, "scripts": (), "has_collision": 0,
    "has_gravitation": 0, "collision_expanded": 1, "gravitation_expanded": 1, "velocity_y": 0.0,
    "gravity_strength": 9.8, "has_texture": 0, "texture_expanded": 1, "texture_repeat": 0, "texture": "",
    "has_rigidbody": 0, "rigidbody_expanded": 1, "mass": 1.0, "drag": 0.05, "velocity": (0.0, 0.0, 0.0),
    "active": 1, "collect_target": "", "collect_prefab": "", "prefab_source": "", "spawner_prefab": "",
    "camera_expanded": 1, "camera_background_set": 0, "camera_background": 0x2D2219, "camera_brightness": 1.0,
    "is_text": 0, "text_expanded": 1, "text": "Text", "text_size": 18.0,
}
TURNING, PULSING, BOUNCING = 0, 1, 2


def thing(name, at, children=(), **values):
    """An object with what hangs on it: its own values in place of a new object's."""
    unknown = set(values) - set(COLUMNS)
    assert not unknown, unknown
    return COLUMNS | {"name": name, "position": at, "children": children} | values


def size(x, y=None, z=None):
    """A scale, the same on every axis unless said otherwise."""
    return (x, x if y is None else y, x if z is None else z)


def tint(red, green, blue):
    """A Color Script. The scene shows a colour's bytes in their order, averaged with those of the mesh."""
    return {"has_color": 1, "color": red << 16 | green << 8 | blue}


def text_color(red, green, blue):
    """Texts show red in the low byte."""
    return {"has_color": 1, "color": blue << 16 | green << 8 | red}


def image(name, repeat=False):
    return {"has_texture": 1, "texture": f"{IMPORTED}\\{name}.png", "texture_repeat": int(repeat),
            "roughness": 0.3, "gloss": 0.0}


def model(name):
    return {"mesh": f"file:{IMPORTED}\\{name}.obj"}


def mesh(name):
    return {"mesh": f"builtin:{name}"}


def animated(kind, speed=1.0):
    return {"has_animation": 1, "animation_type": kind, "animation_speed": speed}


def camera(at, pitch, sky, **values):
    """It gives the view of the game."""
    return thing("Game Camera", at, rotation=(pitch, 0.0, 0.0), is_camera=1, has_shape=0, camera_background_set=1,
                 camera_background=sky, **values)


def in_view(eye, pitch, right, up):
    """A place five units ahead of a camera."""
    c, s = math.cos(pitch), math.sin(pitch)
    x, y, z = eye
    return (x + right, y + up * c + 5 * s, z + 5 * c - up * s)


def sunlight(at, yaw):
    return thing("Directional Light", at, rotation=(-0.7, yaw, 0.0), is_light=1, has_shape=0)


def scenery(name, file, shape, parent_at=(0.0, 0.0, 0.0), parent_size=1.0, **values):
    """One model of many things, whose shape was made where it stands: the transform gives back what loading it takes
    off. Below a parent it was made where that stands."""
    at, half = bounds(shape)
    return thing(name, tuple((c - p) / parent_size for c, p in zip(at, parent_at)), scale=size(half / parent_size),
                 **model(file), **values)


def group(name, at, **values):
    """Nothing to be seen; it places what hangs on it."""
    return thing(name, at, has_shape=0, **values)


def text(name, at, shown, pixels, **values):
    return thing(name, at, is_text=1, has_shape=0, text=shown, text_size=float(pixels), **values)


def shiny(look):
    return look | {"roughness": 0.6, "gloss": 0.7}


def glowing(look):
    """A highlight so broad that most of the lit side has it."""
    return look | {"roughness": 1.0, "gloss": 1.0}


SOLID = {"has_collision": 1}

# The heights of the Inspector's sections, open, and what is left for them in a window of the first size.
SECTION_HEIGHTS = {"text": 96, "camera": 150, "shape": 92, "color": 144, "animation": 100, "collision": 92,
                   "gravitation": 92, "rigidbody": 120, "texture": 92}
SCRIPT_HEIGHTS = {"PlayerController": 64, "CollectOnTouch": 120, "PlanePrefabSpawner": 120}
TRANSFORM_HEIGHT, CLOSED_HEIGHT = 136, 30
ROOM_FOR_SECTIONS = 480
ROOM_BEFORE_SUGGESTIONS = 402  # so much is left where the components that can be added are to be seen whole


def folded(object_):
    """With its sections closed where they would reach the bottom panel: the Transform last, if it must be."""
    shown = [name for name in SECTION_HEIGHTS if object_.get(f"has_{name}") or object_.get(f"is_{name}")]
    scripts = sum(SCRIPT_HEIGHTS[name] for name in object_["scripts"])
    if TRANSFORM_HEIGHT + scripts + sum(SECTION_HEIGHTS[name] for name in shown) <= ROOM_FOR_SECTIONS:
        return object_
    if TRANSFORM_HEIGHT + scripts + CLOSED_HEIGHT * len(shown) > ROOM_BEFORE_SUGGESTIONS:
        shown.append("transform")
    return object_ | {f"{name}_expanded": 0 for name in shown}


def placed(prefab, tree, at, yaw=0.0):
    """An instance of a prefab, as if the user had dropped it and moved it to its place."""
    def instance(object_):
        return object_ | {"prefab_source": prefab, "children": [instance(child) for child in object_["children"]]}

    name = prefab.rsplit("\\", 1)[1].removesuffix(".prefab")
    return instance(tree) | {"name": name, "position": at, "rotation": (0.0, yaw, 0.0)}


def box(name, at, half, texture):
    """A solid block of the given half sizes, its texture repeated."""
    return thing(name, at, scale=half, **image(texture, repeat=True), **SOLID)


# Files.

PLAYER_SCRIPT = """// ZelEngine PlayerController

float moveSpeed = 4.0f;

void Update() {
    // W/S/A/D pohyb je zatim spousten enginem podle nazvu PlayerController.
}
"""


def in_order(things):
    """Each object followed by its children, with the places of the parents."""
    objects = []

    def add(object_, parent):
        place = len(objects)
        objects.append(object_ | {"parent": parent})
        for child in object_["children"]:
            add(child, place)

    for object_ in things:
        add(object_, object_["parent"])
    return objects


def column(name, value):
    if name == "scripts":
        return ";".join(value)
    if isinstance(value, tuple):
        return "\t".join(column(name, number) for number in value)
    if isinstance(value, float):
        read, = struct.unpack("f", struct.pack("f", round(value, 6)))  # the program has floats of 32 bits
        return f"{read:.6f}"
    return str(value)


def object_line(object_):
    object_ = folded(object_) | {"script_count": len(object_["scripts"])}
    return "\t".join(["O", *(column(name, object_[name]) for name in COLUMNS)])


class Project:
    """A project's folder, and what is written into it."""

    def __init__(self, name):
        self.folder = SAMPLES / name

    def path(self, file):
        path = self.folder / file.replace("\\", "/")
        path.parent.mkdir(parents=True, exist_ok=True)
        return path

    def texture(self, color_at, width=SIZE, height=SIZE):
        write_png(self.path(f"{IMPORTED}\\{color_at.__name__}.png"), color_at, width, height)

    def picture(self, name, shape, color_at, width=SIZE, height=SIZE):
        """For the model of that shape, stretched."""
        write_png(self.path(f"{IMPORTED}\\{name}.png"), painted(shape, color_at, width, height), width, height)

    def model(self, name, shape):
        write_obj(self.path(f"{IMPORTED}\\{name}.obj"), *shape)

    def lines(self, file, lines):
        """UTF-8 with a byte-order mark, and with CR LF."""
        self.path(file).write_text("".join(line + "\n" for line in lines), encoding="utf-8-sig", newline="\r\n")

    def objects(self, file, header, things):
        self.lines(file, [*header, *map(object_line, in_order(things))])

    def prefab(self, file, tree):
        self.objects(file, ["ZELENGINE_PREFAB\t1"], [tree])

    def scene(self, file, things):
        self.objects(file, ["ZELENGINE_SCENE\t1"], things)

    def first_scene(self, file, things):
        """The one that opens with the project, of which the project file keeps a copy."""
        self.scene(file, things)
        self.objects("project.zel", ["ZELENGINE_PROJECT\t1", "FILES\tFiles", f"CURRENT_SCENE\t{file}"], things)

    def blueprint(self, file, nodes):
        self.lines(file, ["ZELENGINE_BLUEPRINT\t1", *(
            f"NODE\t{i + 1}\t{title}\t{x}\t{y}" for i, (title, x, y) in enumerate(nodes))])

    def player_script(self):
        self.path("Files\\scripts\\PlayerController.cpp").write_text(PLAYER_SCRIPT, newline="\n")
