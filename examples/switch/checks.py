"""What has to hold: checks that are kept for the summary, and waiting until something is so."""

import time

PATIENCE = 60  # seconds until what has to happen has happened, on any machine


class Failure(Exception):
    """Something is not as it has to be."""


def until(holds, what, pause=0.05):
    """Waits until holds() gives something, and gives that."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        if found := holds():
            return found
        time.sleep(pause)
    raise Failure(f"waited in vain: {what}")


class Checks:
    """What was expected, and what was found."""

    def __init__(self):
        self.rows = []

    def equal(self, what, found, expected):
        self.add(what, found, expected, found == expected)

    def about(self, what, found, expected, share):
        """Within a share of what is expected."""
        wanted = f"{expected} within {share:.0%}"
        self.add(what, found, wanted, abs(found - expected) <= share * expected)

    def add(self, what, found, expected, good):
        self.rows.append((what, found if good else f"{found}, expected {expected}", good))
        print(f"   {'ok' if good else 'DIFFERS'}: {what}: {self.rows[-1][1]}", flush=True)

    def settle(self, what, look, expected):
        """Waits until look() gives what is expected; what it gave last counts."""
        end = time.monotonic() + PATIENCE
        while (found := look()) != expected and time.monotonic() < end:
            time.sleep(0.1)
        self.equal(what, found, expected)

    def good(self):
        return bool(self.rows) and all(good for _, _, good in self.rows)

    def summary(self):
        """A line for each check."""
        width = max(len(what) for what, _, _ in self.rows)
        return "\n".join(f"{'ok' if good else 'DIFFERS':7}  {what.ljust(width)}  {found}"
                         for what, found, good in self.rows)
