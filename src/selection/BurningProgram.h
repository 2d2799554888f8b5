#pragma once

/// Starts the user's burning program; the first time, and when its path is empty, the user chooses it before. Nothing
/// is handed to it. A program that can't be started is told in a box with the system's reason.
void cmdBurn_Click();

/// Lets the user choose another burning program and starts it. After a cancelled choice there is none; the one stored
/// in the settings stays there.
void menu_Tool_Select_Burning_Program_Click();
