# SPDX-License-Identifier: LGPL-2.1-or-later
"""The component's dialog definition, for what the screen must show of it."""

import os
import xml.etree.ElementTree

ROLES = {
    "Button": "push button", "ToolbarItem": "push button", "CheckBox": "check box", "RadioButtonItem": "radio button",
    "ComboBoxMain": "combo box", "TextEntry": "text", "SpinBox": "spin button", "ListBox": "table", "Label": "label",
    "Picture": "icon", "NotebookSet": "page tab list", "DialogWindow": "dialog",
}

# What the keys can be in, a tab set included.
OPERATED = ("Button", "ToolbarItem", "CheckBox", "RadioButtonItem", "ComboBoxMain", "TextEntry", "SpinBox", "ListBox",
            "NotebookSet")


def windows():
    return list(xml.etree.ElementTree.parse(os.environ["QUELM_DIALOGS"]).getroot())


def elements(window_name):
    """The elements of a window in document order, itself first."""
    window = next(one for one in windows() if one.get("Name") == window_name)
    return list(window.iter())
