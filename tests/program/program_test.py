# SPDX-License-Identifier: MIT
"""The whole program, from its start to its end, by mouse and keys under a window manager, judged on pixels and files.

Arguments: the folder of the installed programs, a folder for pictures of what failed, the name of a test.
"""

import glob
import os
import sys
import time

import printqueue
from xsession import Failure, Session, wait_for


def expect(what, holds):
    if not holds:
        raise Failure(what)


def splash_gives_way_by_itself(s):
    s.write_settings("[Common]\nLanguage=1\n")
    s.launch()
    s.splash()
    expect("the main window stays unseen behind the splash", s.find("Sixtrace", above=800) is None)
    s.main()
    expect("the splash has gone", all(w[4] >= 800 for w in s.windows()))


def splash_gives_way_to_a_key(s):
    s.launch()
    s.focus(s.splash())
    began = time.monotonic()
    s.key("a")
    s.main()
    expect("a key shows the main window before the splash's own time", time.monotonic() - began < 20)


def capture_opens_by_keys_and_is_drawn_to_the_pixel(s):
    s.start()
    capture = s.capture("six.bin")
    s.open(capture)
    s.expect_screen("the six traces", s.screen_of(capture))
    other = s.capture("scan.bin", form="W11", scene="scan-d")
    s.open(other)
    s.expect_screen("a slow scan", s.screen_of(other))


def damaged_capture_leaves_the_screen(s):
    s.start()
    capture = s.capture("six.bin")
    s.open(capture)
    expected = s.screen_of(capture)
    s.expect_screen("the six traces", expected)
    with open(os.path.join(s.folder, "bad.bin"), "wb") as file:
        file.write(b"KQXV99" + bytes(500))
    s.open(os.path.join(s.folder, "bad.bin"))
    s.expect_screen("the capture that was there", expected)


def points_and_graticule_follow_the_toolbar_and_last(s):
    s.start()
    capture = s.capture("ramp.bin", scene="ramp")
    s.open(capture)
    s.expect_screen("the ramp", s.screen_of(capture))
    s.tool("point")
    s.tool("graticule")
    s.expect_screen("points without a graticule", s.screen_of(capture, "--points", "--cross"))
    s.focus(s.main())
    s.key("ctrl+q")
    expect("the program ends well", s.ended() == 0)
    s.start()
    s.open(capture)
    s.expect_screen("the same after a new start", s.screen_of(capture, "--points", "--cross"))


def fetch_by_hand(s, folder):
    main = s.main()
    before = set(os.listdir(folder)) if os.path.isdir(folder) else set()
    s.tool("fetch")
    dialog = wait_for("the transfer window", lambda: next((w for w in s.windows() if w[0] != main[0]), None))
    s.focus(dialog)
    s.key("Return")
    wait_for("the end of the transfer", lambda: dialog[0] not in [w[0] for w in s.windows()])
    name = wait_for("the fetched file", lambda: next(iter(set(os.listdir(folder)) - before), None))
    return os.path.join(folder, name)


def capture_is_fetched_over_usb_and_shown(s):
    s.instrument("--scene", "six")
    s.start()
    file = fetch_by_hand(s, os.path.join(s.home, "data"))
    expect("one zero byte behind the capture", open(file, "rb").read() == open(s.capture("same.bin"), "rb").read() + b"\0")
    s.expect_screen("the fetched capture", s.screen_of(s.capture("same.bin")))


def capture_is_fetched_over_serial_and_shown(s):
    s.instrument("--scene", "square", "--rate", "0")
    s.write_settings("[Common]\nLanguage=1\nComPort=1\n")
    s.start()
    file = fetch_by_hand(s, os.path.join(s.home, "dat"))
    expected = s.capture("same.bin", scene="square")
    expect("the capture, byte for byte", open(file, "rb").read() == open(expected, "rb").read())
    s.expect_screen("the fetched capture", s.screen_of(expected))


def quitting_in_mid_transfer_ends_the_program(s):
    s.instrument("--scene", "full", "--rate", "2000")
    s.write_settings("[Common]\nLanguage=1\nComPort=1\n")
    main = s.start()
    s.tool("fetch")
    dialog = wait_for("the transfer window", lambda: next((w for w in s.windows() if w[0] != main[0]), None))
    s.focus(dialog)
    s.key("Return")
    dat = os.path.join(s.home, "dat")
    wait_for("the first bytes", lambda: os.path.isdir(dat) and any(os.path.getsize(os.path.join(dat, f)) for f in os.listdir(dat)))
    s.do("xdotool", "windowclose", dialog[0])
    s.program.terminate()
    s.ended()
    s.start()
    capture = s.capture("six.bin")
    s.open(capture)
    s.expect_screen("a capture after the broken transfer", s.screen_of(capture))


def trace_and_marker_follow_the_mouse(s):
    main = s.start()
    capture = s.capture("sine.bin", scene="sine")
    s.open(capture)
    clean = s.screen_of(capture)
    s.expect_screen("the sine", clean)
    # The marker of channel 1 is dragged down by 40 pixels, and the trace follows by 40 pixels.
    y = marker_row(s, main)
    s.drag(main, (20, y), (20, y + 40))
    s.park()
    moved = wait_for("the moved trace", lambda: (lambda p: p if p != clean else None)(s.screen()))
    expect("the trace stands 40 rows lower", rows_of(moved, RED)[0] == rows_of(clean, RED)[0] + 40)


RED = (255, 0, 0)


def rows_of(picture, colour):
    width, height, data = picture
    wanted = bytes(colour)
    return [y for y in range(height)
            if any(data[(y * width + x) * 3:(y * width + x) * 3 + 3] == wanted for x in range(0, width))]


def marker_row(s, main):
    """Row of the window at which the strip's colour is broken by the marker of the selected channel."""
    width, height, data = s.picture(main, (8, 63, 24, 402))
    ground = data[-3:]
    rows = [y for y in range(height) if sum(data[(y * width + x) * 3:(y * width + x) * 3 + 3] != ground for x in range(width)) > 12]
    expect("a marker stands in the strip", rows)
    return 63 + (rows[0] + rows[-1]) // 2


def cursors_are_dragged_and_stay(s):
    main = s.start()
    s.open(s.capture("sine.bin", scene="sine"))
    before = s.picture(main, (640, 80, 150, 170))
    # The list of cursor types: "Off" is first, voltage cursors come next.
    s.click(main, 740, 253)
    s.key("Down", "Return")
    s.park()
    with_cursors = wait_for("the readouts", lambda: (lambda p: p if p != before else None)(s.picture(main, (640, 80, 150, 170))))
    s.drag(main, (400, 63 + 100), (400, 63 + 140))
    s.park()
    wait_for("readouts that follow the cursor", lambda: s.picture(main, (640, 80, 150, 170)) != with_cursors)


def language_switches_and_lasts(s):
    main = s.start()
    english = s.picture(main, (0, 0, 800, 26))
    s.focus(main)
    s.key("alt+l")
    s.key("Down", "Return")
    s.park()
    wait_for("Chinese in the settings file", lambda: s.settings().get("Language", "").strip() == "0")
    wait_for("the Chinese menu bar", lambda: s.picture(main, (0, 0, 800, 26)) != english)
    s.focus(main)
    s.key("ctrl+q")
    expect("the program ends well", s.ended() == 0)


def closing_the_window_ends_the_program(s):
    main = s.start()
    s.focus(main)
    s.key("alt+F4")
    expect("the program ends well", s.ended() == 0)


def table_is_shown_and_saved_as_text(s):
    main = s.start()
    capture = s.capture("lengths.bin", scene="lengths")
    s.open(capture)
    s.focus(main)
    s.key("ctrl+t")
    table = s.window("Data Table")
    before = s.windows()
    s.click(table, 598, 516)
    dialog = wait_for("the save dialog", lambda: next((w for w in s.windows() if w[0] not in [b[0] for b in before]), None))
    saved = os.path.join(s.folder, "table.txt")
    s.answer_file_dialog(dialog, saved)
    wait_for("the saved table", lambda: os.path.exists(saved))
    expected = os.path.join(s.folder, "expected.txt")
    s.kqx("table", "--language", "1", capture, expected)
    expect("the table as the companion program writes it", open(saved, "rb").read() == open(expected, "rb").read())
    told = wait_for("the message that it was saved", lambda: next((w for w in s.windows() if w[0] not in [b[0] for b in before]), None))
    s.focus(told)
    s.key("Return")
    wait_for("the end of the message", lambda: told[0] not in [w[0] for w in s.windows()])


def preview_shows_the_page_and_closes(s):
    printqueue.start(s) # a page takes its size from a printer
    main = s.start()
    s.open(s.capture("six.bin"))
    s.focus(main)
    s.key("ctrl+shift+p")
    preview = s.window("Print preview")
    s.park()
    inside = (0, 26, preview[4], preview[5] - 26)
    wait_for("a page with a red and a green trace",
             lambda: all(rows_of(s.picture(preview, inside), colour) for colour in (RED, (0, 128, 64))))
    s.focus(preview)
    s.key("alt+F4")
    s.gone("Print preview")
    expect("the main window stays", s.find("Sixtrace", above=800) is not None)


def page_goes_to_the_print_queue(s):
    job = printqueue.start(s)
    main = s.start()
    s.open(s.capture("six.bin"))
    s.focus(main)
    s.key("ctrl+p")
    dialog = wait_for("the print dialog", lambda: next((w for w in s.windows() if w[0] != main[0]), None))
    s.focus(dialog)
    s.key("Return")
    wait_for("the printed page", lambda: os.path.exists(job) and os.path.getsize(job) > 1000)
    text = wait_for("the text of the page", lambda: s.quiet("pdftotext", "-layout", job, "-"))
    for label in ("ch1", "ch2", "500uS", "20.0 V"):
        expect(label + " stands on the page", label in text)


def session_bus_opens_a_capture_in_the_running_program(s):
    s.start_bus()
    s.start()
    capture = s.capture("six.bin")
    s.kqx("open", capture)
    s.expect_screen("the capture that was handed over", s.screen_of(capture))


def companion_starts_the_program_for_a_capture(s):
    s.start_bus()
    s.write_settings("[Common]\nLanguage=1\n")
    capture = s.capture("six.bin")
    s.kqx("open", capture)
    s.main()
    s.expect_screen("the capture that was handed over", s.screen_of(capture))
    s.focus(s.main())
    s.key("ctrl+q")
    wait_for("the end of the program", lambda: not s.windows())


def window_titles_are_those_of_the_design(s):
    """The titles are exact: neither the desktop nor the toolkit appends anything."""
    s.write_settings("[Common]\nLanguage=0\n")
    main = s.start()
    s.focus(main)
    s.key("ctrl+t")
    table = s.window("数值列表")
    expect("the table's title", s.title(table) == "数值列表")
    s.focus(main)
    s.key("F5")
    usb = s.window("USB Transmission")
    expect("the blank at the end of the transfer's title", s.title(usb) == "USB Transmission ")
    expect("the main window's title", s.title(main) == "Sixtrace")


def arguments_are_nobodys(s):
    s.write_settings("[Common]\nLanguage=1\n")
    s.program = s.start_process([s.path("sixtrace"), "-platform", "nonexist", "-stylesheet", "x", "--help"])
    s.main()


def closed_descriptors_hold_nothing_up(s):
    """Messages to standard error must not reach the connection to the display."""
    s.write_settings("[Common]\nLanguage=1\n")
    s.program = s.start_process(["sh", "-c", 'exec "$0" 0<&- 1>&- 2>&-', s.path("sixtrace")])
    s.main()
    opened = [os.readlink("/proc/%d/fd/%d" % (s.program.pid, number)) for number in (0, 1, 2)]
    expect("the first three descriptors lead nowhere: %s" % opened, opened == ["/dev/null"] * 3)


def preview_without_a_printer_shows_the_page(s):
    main = s.start()
    s.open(s.capture("six.bin"))
    s.focus(main)
    s.key("ctrl+shift+p")
    preview = s.window("Print preview")
    s.park()
    inside = (0, 26, preview[4], preview[5] - 26)
    wait_for("a page with a red and a green trace",
             lambda: all(rows_of(s.picture(preview, inside), colour) for colour in (RED, (0, 128, 64))))
    s.focus(preview)
    s.key("Escape")
    s.gone("Print preview")
    s.focus(main)
    s.key("ctrl+p")
    dialog = wait_for("the print dialog", lambda: next((w for w in s.windows() if w[0] != main[0]), None))
    s.focus(dialog)
    s.key("Return")
    file = wait_for("the document", lambda: next((f for f in glob.glob(os.path.join(s.env["HOME"], "*.pdf"))), None))
    text = wait_for("the text of the page", lambda: s.quiet("pdftotext", "-layout", file, "-"))
    for label in ("ch1", "ch2", "500uS", "20.0 V"):
        expect(label + " stands on the page", label in text)


def session_bus_brings_a_minimised_window_back(s):
    s.start_bus()
    main = s.start()
    s.do("xdotool", "windowminimize", main[0])
    wait_for("the window to go", lambda: s.find("Sixtrace", above=800) is None)
    capture = s.capture("six.bin")
    s.kqx("open", capture)
    s.main()
    s.expect_screen("the capture that was handed over", s.screen_of(capture))


TESTS = [window_titles_are_those_of_the_design, arguments_are_nobodys, closed_descriptors_hold_nothing_up,
         preview_without_a_printer_shows_the_page, session_bus_brings_a_minimised_window_back,
         splash_gives_way_by_itself, splash_gives_way_to_a_key, capture_opens_by_keys_and_is_drawn_to_the_pixel,
         damaged_capture_leaves_the_screen, points_and_graticule_follow_the_toolbar_and_last,
         capture_is_fetched_over_usb_and_shown, capture_is_fetched_over_serial_and_shown,
         quitting_in_mid_transfer_ends_the_program, trace_and_marker_follow_the_mouse, cursors_are_dragged_and_stay,
         language_switches_and_lasts, closing_the_window_ends_the_program, table_is_shown_and_saved_as_text,
         preview_shows_the_page_and_closes, page_goes_to_the_print_queue,
         session_bus_opens_a_capture_in_the_running_program, companion_starts_the_program_for_a_capture]


def main():
    programs, folder, name = sys.argv[1:4]
    test = {test.__name__: test for test in TESTS}[name]
    with Session(programs, os.path.join(folder, name)) as session:
        test(session)


if __name__ == "__main__":
    main()
