"""What the trees of a switch have to say, once all have followed the configuration."""

from switch import KINDS, REAL, mount


def configured(switch, kind):
    """Trackers with their exporters and collectors, and groups; nothing where it is disabled."""
    tree = switch.tree(mount(kind, "config"))
    trackers = tree.get("flowTrackerConfig", {}) if tree.get("enabled") else {}
    return {
        name: {
            "exporters": {
                exporter: sorted(its.get("collectorHostAndPort", {}))
                for exporter, its in one.get("expConfig", {}).items()
            },
            "groups": {
                group: sorted(its["expName"]) for group, its in one.get("fgConfig", {}).items()
            },
        }
        for name, one in trackers.items()
    }


def in_service(switch, kind):
    """The same of what the agent says is active, and has asked the hardware for."""
    status = switch.tree(mount(kind, "status")).get("ftStatus", {})
    hardware = switch.tree(mount(kind, "hardware")).get("hwFtConfig", {})
    return {
        name: {
            "exporters": {
                exporter: sorted(
                    host
                    for host, it in its.get("collectorStatus", {}).items()
                    if it.get("active")
                )
                for exporter, its in one.get("expStatus", {}).items()
                if its.get("active")
            },
            "groups": {
                its["fgName"]: sorted(its.get("expName", []))
                for its in hardware.get(name, {}).get("hwFgConfig", [])
            },
        }
        for name, one in status.items()
        if one.get("active")
    }


def size(trackers, expected):
    """How many there are, and whether they are the expected ones."""
    exporters = [its for one in trackers.values() for its in one["exporters"].values()]
    counts = (f"{len(trackers)} trackers, {len(exporters)} exporters,"
              f" {sum(len(hosts) for hosts in exporters)} collectors,"
              f" {sum(len(one['groups']) for one in trackers.values())} groups")
    return counts if trackers == expected else f"{counts}, others than configured"


def realised(switch, kind):
    """The sampling rate and the groups that the platform says are in force."""
    status = switch.tree(mount(kind, "platform"))
    trackers = status.get("hwFtStatus", {})
    groups = [group for one in trackers.values() for group in one.get("hwFgStatus", {})]
    return f"one in {status.get('sampleRate')}, {' '.join(sorted(groups))}"


def wanted(switch, kind):
    """What realised() has to be."""
    rate = switch.tree(mount(kind, "config")).get("sampleRate")
    groups = [group for one in configured(switch, kind).values() for group in one["groups"]]
    return f"one in {rate}, {' '.join(sorted(groups))}"


def interfaces(switch, kind):
    """How many are bound, which of them are active, and whether there are reasons for the rest."""
    bound = switch.tree(mount(kind, "interfaces")).get("flowTrackerIntfConfig", {})
    told = switch.tree(mount(kind, "platform")).get("hwIntfFtStatus", {})
    active = sorted(name for name, one in told.items() if one.get("active"))
    silent = [name for name in bound if not (told.get(name, {}).get("reason") or name in active)]
    return words(len(bound), active, silent)


def words(bound, active, silent):
    rest = "no word of " + " ".join(silent) if silent else "reasons for the rest"
    return f"{bound} bound, active: {' '.join(active) or 'none'}, {rest}"


def left(switch):
    """The mounts that the agent or a platform has to write, and does not."""
    paths = [mount(kind, name) for kind in KINDS
             for name in ("status", "ids", "hardware", "platform")]
    listed = [line.split() for line in switch.quiet("flowtrack mounts")[0].splitlines()]
    written = [line[0] for line in listed if "written" in line]
    return " ".join(path for path in paths if path not in written) or "none"


def check(switch, checks, when):
    """Waits until all agree, of every kind."""
    checks.settle(f"{when}: mounts left by the agent or a platform", lambda: left(switch), "none")
    for kind in KINDS:
        expected = configured(switch, kind)
        checks.settle(f"{when}: {kind}: in service",
                      lambda: size(in_service(switch, kind), expected), size(expected, expected))
        checks.settle(f"{when}: {kind}: in force",
                      lambda: realised(switch, kind), wanted(switch, kind))
        bound = len(switch.tree(mount(kind, "interfaces")).get("flowTrackerIntfConfig", {}))
        active = [REAL[kind]] if switch.captures else []
        checks.settle(f"{when}: {kind}: interfaces", lambda: interfaces(switch, kind),
                      words(bound, active, []))
