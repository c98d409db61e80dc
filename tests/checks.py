"""The checks of a driver: counted, and told when they fail."""

passed = 0
failed = 0


def check(name, condition, detail=""):
    global passed, failed
    if condition:
        passed += 1
    else:
        failed += 1
        print(f"FAIL {name}\n    {detail}")


def status():
    """Says how many checks there were; the exit status."""
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0
