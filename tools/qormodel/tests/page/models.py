"""Small model files in their canonical text."""


def attribute(kind, name, value=None, relations=""):
    lines = "Attr<%s> { \nName \"%s\"\n" % (kind, name)
    if value is not None:
        lines += "Value %s\n" % value
    return lines + relations + "}\n"


def text(name, value):
    return attribute("String", name, '"%s"' % value)


def tells(path, action="Notify"):
    return ('PostObserver \nObserverPath { \nPath "%s"\nPriority 3\nAction "%s"\n}\n' %
            (path, action))


def container(name, attributes="", fields=""):
    return "AttrContainer { \n" + text("Name", name) + attributes + fields + "}\n"


def field(kind, name, attributes=""):
    return 'SubContainer { \n"%s" "%s"\n' % (kind, name) + container(name, attributes) + "}\n"


def child(kind, name, attributes="", fields="", children="", stray=""):
    return ('Child { \n"%s" "%s"\n' % (kind, name) + stray +
            container(name, attributes, fields) + children + "}\n")


def document(name, attributes="", children=""):
    return '"Test"\n"kVLib" 9.1.0.0\n' + container(name, attributes) + children


def matrix(x, y, z, cos=1, sin=0):
    rows = [[cos, -sin, 0, x], [sin, cos, 0, y], [0, 0, 1, z], [0, 0, 0, 1]]
    return attribute("Mat4dd", "Transformation",
                     "  ".join(" ".join(str(each) for each in row) for row in rows))


def points(numbers, name="Points"):
    return attribute("Vec3ddVector", name, "{ " + " ".join(map(str, numbers)) + " } ")


# Points of a wall with a corner, the second arm higher.
CORNER = [number for i in range(40) for j in range(5)
          for number in (min(i, 20) * 0.2, max(i - 20, 0) * 0.2, j * 0.4 + i * 0.02)]


def site(operator="Kim", shift=0, more="", with_marker=True):
    """A project with two scans, a picture, a marker, a relation and a part that is not known."""
    first = child("Transform", "First", matrix(2 + shift, 1, 1.5) + text("Operator", operator) +
                  points(CORNER))
    second = child("Transform", "Second", matrix(-3, 4, 1.5, 0, 1) + points([0, 0, 0, 1, 1, 1]))
    scans = child("Container", "Scans", attribute("int", "Count", 2, tells("/")) +
                  attribute("int", "Lost", 7, tells("/Nowhere")),
                  field("AttrContainer", "Box", attribute("double", "Size", 2.5)), first + second)
    picture = child("Picture", "Photo", matrix(0, 2, 1.7) + attribute("double", "TimeStamp", 1e9))
    marker = child("MarkerBase", "Corner", attribute("Vec3dd", "Position", "5 5 0.3"))
    radar = child("Radar", "Radar", text("Range", "far"), stray="Beam 5\n")
    return document("Site", text("Event", "survey"),
                    scans + picture + (marker if with_marker else "") + radar + more)


HOSTILE = ("</script><script>hacked=1</script><img src=x onerror=hacked=2><!--&lt;"
           "\u2028\u2029'`${hacked=3}")


def hostile():
    name = "<img src=x onerror=hacked=4>"
    inside = child("<svg onload=hacked=5>", name, text("<b>bold</b>", HOSTILE) +
                   attribute("int", "Watched", 1, tells("/<i>x</i>", "<script>hacked=6</script>")) +
                   points([0, 0, 0, 1, 2, 3], "<u>Points</u>"),
                   stray="<script>hacked=7</script>\n")
    placed = child("Transform", "</svg><img src=x onerror=hacked=8>", matrix(1, 2, 3))
    return document("<script>hacked=9</script>", text("Event", HOSTILE), inside + placed)


def twins():
    """Two objects of one name; the relation of the second leads to it, by the path of both."""
    return document("Twins", "", "".join(
        child("Container", "Twin", attribute("int", "Count", number, tells("/")))
        for number in (1, 2)))


def crowd(count):
    """An object with so many attributes, of which each tells the root."""
    return document("Crowd", "", child("Container", "Many", "".join(
        attribute("int", "Number%d" % number, number, tells("/")) for number in range(count))))


def large(count):
    """A document of so many objects, with the attributes that each object has, in 100 groups."""
    def one(name):
        return (text("Action", "") + text("Event", "event of " + name) +
                attribute("uint16_t", "MajorVersion", 1) + attribute("uint16_t", "MinorVersion") +
                attribute("double", "Height", 1.75))
    size = count // 100
    groups = "".join(
        child("Container", "Group%d" % group, one("Group%d" % group), "", "".join(
            child("Transform", "Object%d" % number,
                  one("Object%d" % number) + matrix(number, group, 0))
            for number in range(group * size, (group + 1) * size - 1)))
        for group in range(100))
    return document("Large", "", groups)
