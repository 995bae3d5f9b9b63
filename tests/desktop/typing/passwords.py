# SPDX-License-Identifier: MIT
"""Random passwords with all that is hard to type."""

import random
import string

PLAIN = string.ascii_letters + string.digits + string.punctuation + " "
TURKISH = "çğıöşüÇĞİÖŞÜ"
SIGNS = "€₺£§½ßæéàèçùäñøÆÉµ°²“”«»–…¿日本жЯα"
CLUSTERS = ["👩‍👩‍👧‍👦", "👍🏽", "🇹🇷", "❤️", "🏳️‍🌈", "👨🏿‍🚀", "1️⃣", "é\u0323", "😀", "🔑", "🦊"]
LENGTH = 64


def random_password(source: random.Random):
    """Its characters, one at least of each kind."""
    characters = [source.choice(kind) for kind in (PLAIN, TURKISH, SIGNS, CLUSTERS, "^`", "@#{}[]|\\~")]
    while len(characters) < LENGTH:
        kind, = source.choices([PLAIN, TURKISH, SIGNS, CLUSTERS], weights=[80, 12, 5, 3])
        characters.append(source.choice(kind))
    source.shuffle(characters)
    return characters


def errors_between(expected, received):
    """How many code points are missing, too many or others (edit distance)."""
    row = list(range(len(received) + 1))
    for i, wanted in enumerate(expected, 1):
        before, row[0] = row[0], i
        for j, got in enumerate(received, 1):
            before, row[j] = row[j], min(row[j] + 1, row[j - 1] + 1, before + (wanted != got))
    return row[-1]
