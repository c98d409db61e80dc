# A state machine whose state is a variable.
n = 40000000   # size


def main():
    idle, heating, cooling = range(3)
    steps = 0
    signal = 0
    heats = 0
    cools = 0
    state = idle
    while True:
        steps = steps + 1
        if state == idle:
            if steps > n:
                break
            signal = signal + 11
            if signal > 16:
                signal = signal - 17
            if signal < 5:
                state = heating
            elif signal > 11:
                state = cooling
        elif state == heating:
            heats = heats + 1
            signal = signal + 5
            if signal > 10:
                state = cooling
            else:
                state = idle
        else:
            cools = cools + 1
            signal = signal - 4
            if signal > 5:
                pass
            elif signal == 5:
                state = heating
            else:
                state = idle
    print("%.0f %.0f %.0f" % (steps, heats, cools))


main()
