"""One whole job by names alone: a new employer and employee, his car, the form in the preview and as a file. On the way
every window that stands beside the form is called up by its key, says what it is and what is in it, and goes again."""

from desk import Missing, below, is_in, run, wait_for
from gi.repository import Atspi

# The windows beside the form: the key or the menu's entry that calls each up, its title, and controls by which it is
# known. Escape takes each away.
BESIDE = [
    ("<Ctrl>f", "Find Employee", [
        ("text", "Any part of a name, an employer, a works number or a National Insurance number"),
        ("tree", "Employees found")]),
    ("<Ctrl>e", "Overview", [("text", "Only lines with these words"), ("tree", "Overview")]),
    ("F2", "Explain", [("tree", "Steps of the working")]),
    ("<Ctrl>h", "History", [("tree", "What was done"), ("tree", "What it changed")]),
    ("F1", "Help", [("text", "Words to look for in the guide"), ("tree", "Chapters and sections of the guide")]),
    ("Safety Copies...", "Safety Copies", [("tree", "Copies of the client database")]),
    ("Check the Calculators...", "Check the Calculators", []),
    ("About...", "About", [("tree", "About the program")]),
]

# What can be used has a name; these are rooms in which others stand.
ROOMS = {"filler", "panel", "scroll pane", "viewport", "scroll bar", "separator", "tool bar", "menu bar", "status bar",
         "redundant object", "table cell", "table column header", "table row header", "table", "list item", "label",
         "layered pane", "unknown", "page tab list", "paragraph", "document frame", "text frame"}


def every_control_has_a_name(desk, window):
    for control in below(window):
        takes_focus = is_in(control, Atspi.StateType.FOCUSABLE) and is_in(control, Atspi.StateType.SHOWING)
        if takes_focus and control.get_role_name() not in ROOMS and not control.get_name().strip():
            raise Missing(f"the name of a {control.get_role_name()} in {window.get_name()!r}")


def look_at_windows_beside(desk):
    for way, title, controls in BESIDE:
        desk.focus("Cash equivalent of the car, car 1")
        if way.endswith("..."):
            desk.press("menu item", way)
        else:
            desk.key(way)
        window = desk.window(title)
        wait_for(f"the role of {title!r}, not {window.get_role_name()}", lambda: window.get_role_name() == "dialog")
        for role, name in controls:
            desk.find(role, name)
        every_control_has_a_name(desk, window)
        desk.key("Escape")
        desk.gone(title)


def look_at_the_check(desk):
    """The panel, from the form by letters alone."""
    desk.focus("Cash equivalent of the car, car 1")
    desk.key("F9")
    desk.find("tree", "Things to look at")
    for letter, scope in (("m", "All of this employer"), ("p", "This employee")):
        desk.key(f"<Alt>{letter}")
        option = desk.find("radio button", scope)
        wait_for(f"the mark of {scope!r}", lambda: is_in(option, Atspi.StateType.CHECKED))
    desk.key("<Alt>l")
    desk.without("tree", "Things to look at")


def look_at_dictation(desk):
    """What is put into a box is typed there: its filter sees it, and leaving works it out. A closed box keeps its own."""
    desk.put("A, cost or market value", "12x.5")
    desk.reads("A, cost or market value", "12.5")
    desk.put("A, amount made good or from which tax deducted", "2")
    desk.reads("A, cost or market value", "12.50")
    desk.put("Employer name", "Other Ltd")
    desk.reads("Employer name", "Acme Ltd")
    desk.put("Make and model, car 1", "Estate car")
    desk.reads("A, cash equivalent, box 13", "10.50")


def look_at_notes(desk):
    """A picture says how much stands behind it."""
    picture = "Assets transferred: list of items"
    desk.press("push button", picture)
    desk.window("Assets transferred")
    desk.type("Description, line 1", "Computer")
    desk.type("Cost/Market Val, line 1", "200")
    desk.press("push button", "OK")
    desk.gone("Assets transferred")
    desk.tells("push button", picture, "1 line, total 200.00")


def job(desk):
    desk.press("menu item", "New")
    desk.window("New File Options")
    desk.press("radio button", "I would like to create a new Employer and Employee")
    desk.press("push button", "OK")
    desk.window("New File")
    desk.type("Employer name", "Acme Ltd")
    desk.type("PAYE Reference", "123/A456")
    desk.type("Enter New Employee Firstname", "Jane")
    desk.type("Enter New Employee Surname", "Smith")
    desk.press("push button", "OK")
    desk.gone("New File")

    desk.type("Make and model, car 1", "Estate")
    desk.type("Date first registered, car 1", "01/03/2009")
    desk.type("Approved CO2 emissions figure, g/km, car 1", "150")
    desk.type("Type of fuel or power used, key letter, car 1", "P")
    desk.type("List price of car, car 1", "20000")
    desk.press("check box", "Fuel Benefit Required?, car 1")
    desk.reads("Cash equivalent of the car, car 1", "3800.00")
    desk.reads("Cash equivalent of the fuel, car 1", "3420.00")

    look_at_dictation(desk)
    look_at_windows_beside(desk)
    look_at_the_check(desk)
    look_at_notes(desk)

    desk.press("menu item", "Print ")
    preview = desk.window("Print Preview")
    every_control_has_a_name(desk, preview)
    desk.press("push button", "Save PDF...")
    desk.window("Save PDF")
    desk.press("push button", "Save")
    desk.gone("Save PDF")
    file = desk.folder / "Acme Ltd - Jane Smith - P11D 2010-11.pdf"
    wait_for(f"a form in {file.name}", lambda: file.exists() and file.read_bytes().startswith(b"%PDF"))
    desk.press("push button", "Close")
    desk.gone("Print Preview")
    desk.reads("Employee surname", "Smith")


run(job)
