// SPDX-License-Identifier: MIT
#pragma once

class QFileDialog;

/// The program's look on Qt's file panel.
namespace FilePanelLook {

/// Once before the first panel: Qt would write down, readable by all, which folders were looked into.
void keepNothing();

/// Gives the panel our symbols, sizes and columns. Before it shows.
void apply(QFileDialog& panel);

}  // namespace FilePanelLook
