"""The works that scripts/bench.sh measures: what numpy and numexpr are asked, and what we want to reach.

The programs share the names of works; bench/support/ZetWorks.cpp tells the equations, the operands are
made from the same numbers in both, and the answers are compared.
"""

from dataclasses import dataclass, field

SIZES = (4096, 65536, 1048576)


@dataclass(frozen=True)
class Goals:
    """What our time is to be at most, as a multiple of another's; None: nothing is wanted."""

    hand: dict = field(default_factory=dict)  # of the loop by hand, by size
    peer: float = None                        # of the fastest library
    peer_name: str = None                     # of this library instead


@dataclass(frozen=True)
class Work:
    name: str
    sizes: tuple = (65536,)
    # variable -> (element type, least, greatest)
    operands: dict = field(default_factory=dict)
    # who -> an expression of Python over the operands; each gives a new array of the type that we give
    peers: dict = field(default_factory=dict)
    goals: Goals = Goals()
    per_element: bool = True
    picture: str = None                       # its title in the picture, where it has a place there

    def rows(self):
        """The names of the work's rows, with the count of elements of each."""
        if not self.sizes:
            return [(self.name, None)]
        return [(f"{self.name}, {size}", size) for size in self.sizes]


def _both(at_65536, at_1048576):
    return {65536: at_65536, 1048576: at_1048576}


_BANDS = {"nir": ("uint16", 1, 65535), "red": ("uint16", 1, 65535)}
_X = {"x": ("float64", -2, 2)}
_COUNTS = {"x": ("uint16", 1, 65535)}

# numpy computes integers in double where they are cast first, and takes no longer so than by dtype=.
# numexpr computes integers of 8 and 16 bits as those of 32 bits: where the result would stay one, they
# are cast first too; where a quotient makes it a double, they are handed over as they are.
_INDEX_NUMPY = "(lambda n, r: (n - r) / (n + r))(nir.astype(f8), red.astype(f8))"
_INDEX_NUMEXPR = "evaluate('(nir-red)/(nir+red){}', truediv=True)"


_MEDIAN = "np.partition(x, (x.size - 1) // 2)[(x.size - 1) // 2]"


def _reduction(function, kind, numpy, goals, numexpr=None):
    operands = {"x": {"U16": ("uint16", 1, 65535), "Float": ("float32", 1, 2000)}[kind]}
    peers = {"numpy": numpy} | ({"numexpr": numexpr} if numexpr else {})
    return Work(f"{function}(x), {kind}", (65536,), operands, peers, goals,
                picture=f"{function}, {kind}" if function in ("sum", "median") else None)


def _clip(kind, operands, as_double):
    return Work(
        f"clip(x,-1,1), {kind}", SIZES, operands,
        {
            "numpy": f"np.clip({as_double}, -1, 1)",
            # what few write: the same by two calls
            "numpy, two calls": f"np.minimum(np.maximum({as_double}, -1.0), 1.0)",
            "numexpr": "evaluate('where(x < -1, -1.0, where(x > 1, 1.0, x))')",
        },
        Goals(_both(1.2, 1.2), 0.1), picture=f"clip(x,-1,1), {kind}")


def _swap(width, goals=Goals({65536: 1.1}, 0.15)):
    return Work(f"swap bytes {width}", (), {"x": (f"uint{8 * width}", 0, 255)},
                {"numpy": "x.byteswap(inplace=True)"}, goals, per_element=False)


WORKS = [
    # over one element too, for what an evaluation costs by itself
    Work("a+b, U8", (1, *SIZES), {"a": ("uint8", 1, 250), "b": ("uint8", 1, 250)},
         {"numpy": "a.astype(f8) + b", "numexpr": "evaluate('a+b', {'a': a.astype(f8), 'b': b.astype(f8)})"},
         Goals(_both(1.0, 1.1), 0.3), picture="a+b, U8"),
    Work("(nir-red)/(nir+red), U16", SIZES, _BANDS,
         {"numpy": _INDEX_NUMPY, "numexpr": _INDEX_NUMEXPR.format("")},
         Goals(_both(1.1, 1.2), 0.15), picture="(nir-red)/(nir+red), U16"),
    Work("roundclip of the index to U8", SIZES, _BANDS,
         {"numpy": f"(np.clip({_INDEX_NUMPY}*127.5 + 127.5, 0, 255) + 0.5).astype(np.uint8)",
          "numexpr": "evaluate('where(v <= 0, 0.0, where(v >= 255, 255.0, v + 0.5))', {'v': "
                     + _INDEX_NUMEXPR.format("*127.5+127.5")
                     + "}, out=np.empty(nir.size, np.uint8), casting='unsafe')"},
         Goals(_both(0.7, 0.7), 0.12),
         picture="the same, rounded and clipped to U8"),
    Work("3*x*x*x-2*x*x+x-5, Double", SIZES, _X,
         {"numpy": "3*x*x*x - 2*x*x + x - 5", "numexpr": "evaluate('3*x*x*x-2*x*x+x-5')"},
         Goals(_both(2.0, 1.9), 0.2), picture="3*x*x*x-2*x*x+x-5, Double"),
    # numpy's functions differ from the platform's in the last bits
    Work("sin(x)*cos(y)+exp(-x*x), Double", (65536,), _X | {"y": ("float64", -2, 2)},
         {"numpy": "np.sin(x)*np.cos(y) + np.exp(-x*x)", "numexpr": "evaluate('sin(x)*cos(y)+exp(-x*x)')"},
         Goals({65536: 1.0}, 1.0, "numexpr"), picture="sin(x)*cos(y)+exp(-x*x), Double"),
    Work("a*b+c, ComplexDouble", SIZES, {name: ("complex128", -2, 2) for name in "abc"},
         {"numpy": "a*b + c", "numexpr": "evaluate('a*b+c')"},
         Goals(_both(1.1, 1.1), 0.65), picture="a*b+c, ComplexDouble"),
    # sums in double, as ours are: numexpr would sum floats as floats, and integers in 32 bits
    _reduction("sum", "U16", "x.sum()", Goals({65536: 1.2}, 0.1), "evaluate('sum(x)', {'x': x.astype(f8)})"),
    _reduction("sum", "Float", "x.sum(dtype=f8)", Goals({65536: 0.4}, 0.6), "evaluate('sum(x)', {'x': x.astype(f8)})"),
    _reduction("min", "U16", "x.min()", Goals({65536: 1.4}, 0.6)),
    _reduction("min", "Float", "x.min()", Goals({65536: 1.4}, 0.6)),
    _reduction("max", "U16", "x.max()", Goals({65536: 1.4}, 0.6)),
    _reduction("max", "Float", "x.max()", Goals({65536: 1.4}, 0.6)),
    # the lower one of the two in the middle; numpy.median takes a little longer
    _reduction("median", "U16", _MEDIAN, Goals({65536: 1.2}, 0.16)),
    _reduction("median", "Float", _MEDIAN, Goals({65536: 1.2}, 0.15)),
    _clip("Double", _X, "x"),
    _clip("U16", _COUNTS, "x.astype(f8)"),
    *(_swap(width) for width in (2, 4, 8)),
    Work("set 4 variables, evaluate", (), goals=Goals(peer=1.2, peer_name="muParserX"), per_element=False),
    Work("parse an equation of 18 calls", (), goals=Goals(peer=0.5, peer_name="muParser"), per_element=False),
    Work("parse known units", (), goals=Goals(peer=0.02), per_element=False),
    Work("parse new units", (), goals=Goals(peer=0.6), per_element=False),
]

# Those whose first evaluations are measured in processes of their own, at one size.
FRESH = [work.name for work in WORKS[:4]]
FRESH_SIZE = 65536
FRESH_GOAL = 1.5         # of the warm figure
FAULTS_GOAL = 2          # page faults for one evaluation: fewer
FIXED_GOAL = 1500        # nanoseconds of the first work over one element
