"""Reads what Vembrix tells assistive programs, as one of them: `tree` prints it all as
JSON; `press ROLE NAME` does what a press does and prints whether there was one to press."""

import json
import sys

import pyatspi


def application():
    for program in pyatspi.Registry.getDesktop(0):
        if program is not None and program.name == "Vembrix":
            return program
    return None


def actions(node):
    try:
        action = node.queryAction()
    except NotImplementedError:
        return []
    return [action.getName(index) for index in range(action.nActions)]


def children(node):
    return [child for child in node if child is not None]


def described(node):
    return {
        "role": node.getRoleName(),
        "name": node.name,
        "description": node.description,
        "checked": node.getState().contains(pyatspi.STATE_CHECKED),
        "actions": actions(node),
        "children": [described(child) for child in children(node)],
    }


def press(node, role, name):
    if node.getRoleName() == role and node.name == name and "Press" in actions(node):
        node.queryAction().doAction(actions(node).index("Press"))
        return True
    return any(press(child, role, name) for child in children(node))


def main(command, *arguments):
    program = application()
    if command == "tree":
        print(json.dumps(described(program) if program else {"role": "", "children": []}))
    else:
        print(json.dumps(program is not None and press(program, *arguments)))


main(*sys.argv[1:])
