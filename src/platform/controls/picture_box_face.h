#pragma once

/// Lets assistive programs know picture boxes by what they are. Any number of calls does what one does.
void install_picture_box_face();
