// The controls of our dialogs. Buttons that message boxes have too keep their ids: IDOK, IDCANCEL, IDYES,
// IDNO.
#pragma once

namespace vaxel {

enum DialogControlId : int {
  IDC_PROMPT = 1000,  // the text of an input box, of a long message, of the about box
  IDC_LABEL1,         // beside or above IDC_TEXT1
  IDC_LABEL2,
  IDC_TEXT1,
  IDC_TEXT2,
  IDC_COMMAND1,
  IDC_HINT,
  IDC_PICTURE,
  IDC_FRAME1,
  IDC_FRAME2,
  IDC_CHECK1,
  IDC_CHECK2,
  IDC_CHECK3,
  IDC_COMMAND2,
  IDC_COMMAND3,
  IDC_STATUS,  // what a button has found
  IDC_LIST,
  IDC_PREVIOUS,  // of a preview
  IDC_NEXT,
  IDC_LARGER,
  IDC_SMALLER,
  IDC_WHOLE,
  IDC_PRINTER,  // the button that chooses one
  IDC_PRINTER_TEXT,
  IDC_CALIBRATION,
  // One a language, then the entry that cannot be chosen.
  IDC_OPTION1_FIRST = 1100,
  IDC_OPTION2_FIRST = 1300
};

}  // namespace vaxel
