"""What the workloads are, which of their metrics stand in the tables, and what we want to reach."""

TITLES = {
    "W0": "A line and its flush",
    "W1": "Setting a watched value",
    "W2": "A million points as text and back",
    "W3": "A tree of 111,111 objects",
    "W4": "Settings",
}

TEXTS = {
    "W0": "A million lines of 16 bytes, with the flush that our writer gives to every line and without.",
    "W1": "A double is set a million times. `k` is the number of observers that read the new value, `pre1` "
          "means one more ahead of the change, which may refuse it. The floor is a value with vectors of "
          "`std::function`.",
    "W2": "`d` are doubles of six digits as a scanner exports them, `f` the same as floats, `full` doubles "
          "with full mantissas. The floor writes our bytes with `std::to_chars` and reads them with "
          "`std::from_chars` in plain memory. Ours write to and read from a string stream, and from a host's "
          "own buffer. What has the kind not-text writes no text.",
    "W3": "Each object has a name and eight values: built, written and read as text, copied, compared with "
          "its copy, destroyed; 100,000 paths are followed. `wide_n` is one parent to which n children are "
          "added, each under a name that must not be taken; `wide_growth` is the exponent, 1 for a cost "
          "that does not depend on n. `heap_new` is a new object of 14 attributes, `heap_touched` one "
          "of which each has been asked for, `heap_attr` and `heap_attr_touched` what one attribute adds to them. The floor is plain structs, with our text written and read by hand.",
    "W4": "2,000 groups of five texts are stored and read one by one; then one value is changed and made "
          "durable. The floor is maps and one file.",
}

METRICS = {
    "W0": ["line"],
    "W1": ["set_pre0_k0", "set_pre0_k1", "set_pre0_k4", "set_pre0_k16", "set_pre1_k0", "set_pre1_k1",
           "set_pre1_k4", "allocs_pre0_k4", "allocs_pre1_k4"],
    "W2": ["d.write", "d.read", "f.write", "f.read", "full.write", "full.read", "d.bytes", "full.bytes"],
    "W3": ["build", "allocs", "heap", "heap_new", "heap_attr", "heap_touched",
           "heap_attr_touched", "write", "text", "read", "copy", "compare",
           "destroy", "lookup", "wide_20000", "wide_80000", "wide_growth"],
    "W4": ["write", "read", "change_one_and_commit"],
}

# How many times the floor's time or size is the most that we want, and what we would like best.
TARGETS = {
    ("W1", "ours"): {"set_pre0_k0": (3.8,), "set_pre0_k1": (3.9,), "set_pre0_k4": (3.0,),
                     "set_pre0_k16": (2.9,), "set_pre1_k0": (10.6,), "set_pre1_k1": (9.0,),
                     "set_pre1_k4": (6.0,)},
    ("W2", "ours"): {metric: (1 / 2.0 if metric.endswith("write") else 1 / 0.79,)
                     for metric in METRICS["W2"][:6]},
    ("W3", "ours"): {"build": (8.9, 6.2), "heap": (5.9, 4.8), "write": (2.3, 2.0), "read": (4.6, 3.6),
                     "copy": (13, 8.3), "compare": (8.9, 5.7), "lookup": (5.4, 3.8)},
}

# Values that are wanted as they stand: the most, or for rates the least.
LIMITS = {
    ("W1", "ours"): {"allocs_pre0_k4": 0, "allocs_pre1_k4": 1},
    ("W3", "ours"): {"heap_attr": 150, "heap_attr_touched": 150},
    ("W4", "ours_memory"): {"write": 1_000_000},
}

# Texts hash to these; another one is no longer the same workload.
HASHES = {
    "W2": {"d.text_hash_low32": 225848211, "f.text_hash_low32": 2535341951,
           "full.text_hash_low32": 1179449492},
    "W3": {"text_hash_low32": 523874415},
}
