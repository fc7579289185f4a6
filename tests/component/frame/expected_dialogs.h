// What the dialogs must be: every window and widget, as hosts and the callbacks rely on them.
// SPDX-License-Identifier: LGPL-2.1-or-later
#ifndef TESTS_COMPONENT_FRAME_EXPECTED_DIALOGS_H
#define TESTS_COMPONENT_FRAME_EXPECTED_DIALOGS_H

/// One widget a line, in document order; a widget stands two blanks further right than its container.
/// Columns: Name | element | XPos,YPos WidthxHeight | Text | AddCallback | other attributes.
/// Empty columns at the end of a line are left out; what a line does not give, the widget does not have.
inline constexpr const char expectedDialogs[] = R"table(
Lan Fax Window                               | DialogWindow            | 620x475        |  | T40FaxDialogCancel | Title=Quelm LAN Fax Setup; Parent=Main Driver Window
  Lan Fax Main Fixed                         | FixedContainer
    Lan Fax TabTable                         | TableContainer          | 5,5 610x420
      Lan Fax TabSet                         | NotebookSet
        LanFax Recipients Tab                | NotebookPage            |                | Fax Recipients
          LanFaxRcptFixed                    | FixedContainer
            AddFaxRcptToolbar                | ToolbarMenu             | 25,10          |  |  | Alignment=Horizontal
              AddFaxRcpt                     | ToolbarItem             | 275x75         | Add Fax Recipient... | T40ShowFaxRecipientDialog | PicFile=icon/base/Fax/AddRecipient.gif
              AddPBFaxRcpt                   | ToolbarItem             | 275x75         | Add From Phonebook... | T40ShowAddRcptFromPBDialog | PicFile=icon/base/Fax/AddFromPhonebook.gif
            LanFax Recipient List Label      | Label                   | 10,105         | Fax Recipient List
            LanFax Recipient Scroll          | ScrolledWindowContainer | 10,125 550x175
              LanFax Recipient List          | ListBox                 | 1500x1500      |  | T40SelectFaxRecipient | SelectionMode=Multiple; AddListColumn1=Name; AddListColumn2=Fax Number; AddListColumn3=Organization; AddListColumn4=Phone Number; AddListColumn5=Email Address; AddListColumn6=Mailbox
            LanFax Details Button            | Button                  | 10,310 125x22  | _Details... | T40EditFaxRecipient | Sensitivity=false
            LanFax Save Group Button         | Button                  | 150,310 125x22 | Save _Group... | T40SaveGroup
            LanFax Save Entry Button         | Button                  | 290,310 125x22 | Save _Entry... | T40SaveEntry
            LanFax Remove Button             | Button                  | 430,310 125x22 | _Remove... | T40RemoveFaxRecipientTest
            LanFax Help Button               | Button                  | 507,360 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax
        LanFax Options Tab                   | NotebookPage            |                | Fax Options
          LanFaxOptFixed                     | FixedContainer
            LanFax Conf Sheet Mimic          | Picture                 | 5,25           |  |  | PicFile=icon/base/Fax/ConfirmationSheet.gif
            LanFax Conf Sheet Label          | Label                   | 50,15          | Confirmation Sheet:
            LanFaxConfSheet                  | RadioButton             |                | Print a Confirmation Sheet
              LanFax Print Conf Sheet        | RadioButtonItem         | 50,35          | Print a Confirmation Sheet
              LanFax No Conf Sheet           | RadioButtonItem         | 50,55          | Do Not Print a Confirmation Sheet
            LanFax Cover Sheet Options Mimic | Picture                 | 340,30         |  |  | PicFile=icon/base/Fax/CoverSheet.gif
            LanFax Cover Sheet Options Label | Label                   | 375,15         | Cover Sheet Options:
            LanFax Cover Sheet Option        | RadioButton             |                | Print a Cover Sheet
              LanFax No Cover Sheet          | RadioButtonItem         | 375,35         | Do Not Print a Cover Sheet
              LanFax Cover Sheet             | RadioButtonItem         | 375,55         | Print a Cover Sheet
            LanFax Setup Cover Sheet Button  | Button                  | 420,80 150x22  | _Setup... | T40ShowFaxCoverSheetSetupDialog | Sensitivity=false
            LanFax Send Speed Mimic          | Picture                 | 5,100          |  |  | PicFile=icon/base/Fax/SendSpeed.gif
            LanFax Send Speed Label          | Label                   | 50,95          | Send Speed:
            LanFax Send Speed                | ComboBoxMain            | 50,115         | Send Speed
              4800                           | ComboBoxItem            |                | Forced 4800 bps
              14.4                           | ComboBoxItem            |                | G3 (14.4 Kbps)
              Super G3                       | ComboBoxItem            |                | Super G3 (33.6 Kbps)
            LanFax Resolution Mimic          | Picture                 | 5,160          |  |  | PicFile=icon/base/Fax/Resolution.gif
            LanFax Resolution Label          | Label                   | 50,155         | Fax Resolution:
            LanFax Resolution                | ComboBoxMain            | 50,175
              Standard                       | ComboBoxItem            |                | Standard
              Superfine                      | ComboBoxItem            |                | Superfine
              Fine                           | ComboBoxItem            |                | Fine
            Cover Sheet Notes Label          | Label                   | 375,130        | Cover Sheet Notes:
            LanFax Cover Sheet Notes         | TextEntry               | 375,150 175x20 |  |  | SetMaximum=64
            LanFax Send Time Mimic           | Picture                 | 5,220          |  |  | PicFile=icon/base/Fax/SendTime.gif
            LanFax Send Time Label           | Label                   | 50,215         | Send Time:
            LanFax Send Time                 | RadioButton
              LanFax Send Now                | RadioButtonItem         | 50,230         | Send Now
              LanFax Send At                 | RadioButtonItem         | 50,250         | Send At:
            SendAtFixed                      | FixedContainer          | 160,249
              SendAtHr                       | SpinBox                 | 0,0 40x24      |  |  | AdjDefaultValue=12; AdjLowerLimit=1; AdjUpperLimit=12; AdjIncrement=1
              SendAtMin                      | SpinBox                 | 25,0 40x24     |  |  | AdjDefaultValue=0; AdjLowerLimit=0; AdjUpperLimit=59; AdjIncrement=1
              SendAtAmPm                     | ComboBoxMain            | 50,1 50x22
                SendAm                       | ComboBoxItem            |                | AM
                SendPm                       | ComboBoxItem            |                | PM
            LanFax Dialing Options Mimic     | Picture                 | 5,295          |  |  | PicFile=icon/base/Fax/DialingOptions.gif
            LanFax Dialing Options Label     | Label                   | 50,295         | Fax Dialing Options:
            LanFaxDialing Box                | BoxContainer            | 50,315         |  |  | Alignment=Horizontal
              LanFax Dialing Prefix          | CheckBox                |                | Dialing Prefix
              LanFax Dialing Prefix Info     | TextEntry               | 100x17         |  |  | SetMaximum=4
            LanFaxCreditCard Box             | BoxContainer            | 50,335         |  |  | Alignment=Horizontal
              LanFax Credit Card             | CheckBox                |                | Credit Card
              LanFax Credit Card Info        | TextEntry               | 100x17         |  |  | SetMaximum=31
            LanFax Help Button               | Button                  | 400,360 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax
            Defaults Button                  | Button                  | 482,360 100x22 | _Defaults | LanFaxOptionsTabDefaults
        LanFax Preferences Tab               | NotebookPage            |                | Preferences
          LanFaxPrefFixed                    | FixedContainer
            Add Rcpt From PB Mimic           | Picture                 | 5,23           |  |  | PicFile=icon/base/Fax/AddFromPhonebook.gif
            LanFax Default PB Label          | Label                   | 75,25          | Default Phonebook:
            LanFax Default PB                | ComboBoxMain            | 75,45 250x25
              Personal                       | ComboBoxItem            |                | Personal Phonebook
              Shared                         | ComboBoxItem            |                | Shared Phonebook
              LDAP                           | ComboBoxItem            |                | Shared LDAP Phonebook
            LanFax Pref Prompt Label         | Label                   | 350,20         | Prompt me when...
            LanFax Pref Duplicates           | CheckBox                | 350,40         | Adding Duplicate Recipients | T40LanFaxPreferencesCB
            LanFax Pref Remove One           | CheckBox                | 350,60         | Removing a Recipient | T40LanFaxPreferencesCB
            LanFaxPref AlwaysUse Fixed       | FixedContainer          | 350,125        |  |  | Sensitivity=false; Visibility=false
              LanFax Pref Always Label       | Label                   | 0,0            | Always Use...
              LanFax Pref Current List       | CheckBox                | 0,20           | Current Recipient List | T40LanFaxPreferencesCB
              LanFax Pref Current Cover Notes | CheckBox                | 0,40           | Current Cover Sheet Notes | T40LanFaxPreferencesCB
            LanFax PB Preferences Label      | Label                   | 75,105         | Phonebook Preferences:
            Personal PB Mimic                | Picture                 | 25,130         |  |  | PicFile=icon/base/Fax/AddFromPhonebook.gif
            LanFax Personal PB Preferences Label | Label                   | 95,130         | Personal Phonebook:
            LanFax Personal PB Name          | TextEntry               | 95,150 230x20  |  |  | Editable=false
            Open Personal PB Button          | Button                  | 95,180 90x22   | Open... | OpenPersonalPB
            Select Personal PB Button        | Button                  | 195,180 130x22 | Select File... | InvokePersonalSelectFileDialog
            Personal PB Mimic                | Picture                 | 25,215         |  |  | PicFile=icon/base/Fax/AddFromPhonebook.gif
            LanFax Shared PB Preferences Label | Label                   | 95,215         | Shared Phonebook:
            LanFax Shared PB Name            | TextEntry               | 95,235 230x20  |  |  | Editable=false
            Open Shared PB Button            | Button                  | 95,265 90x22   | Open... | OpenSharedPB
            Select Shared PB Button          | Button                  | 195,265 130x22 | Select File... | InvokeSharedSelectFileDialog
            LanFax LDAP PB Preferences Label | Label                   | 95,305         | Shared LDAP Phonebook:
            LDAP PB Status                   | TextEntry               | 95,325 190x20  | Enabled |  | Editable=true; Sensitivity=false
            LDAP More Info Button            | Button                  | 95,355 190x22  | More Info... | LDAPMoreInfoCB | Sensitivity=true
            LanFax Help Button               | Button                  | 400,360 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax
            Defaults Button                  | Button                  | 482,360 100x22 | _Defaults | LanFaxPrefsTabDefaults
    LanFax OK Button                         | Button                  | 450,435 75x22  | _Ok | T40LanFaxDialogOk
    LanFax Cancel Button                     | Button                  | 533,435 75x22  | _Cancel | T40FaxDialogCancel

LanFax Add Recipient Window                  | DialogWindow            | 320x445        |  | T40CancelFaxRecipientDialog | Title=Add Fax Recipient; Visibility=false
  Add Fax Rcpt Fixed                         | FixedContainer
    Add Rcpt Mimic                           | Picture                 | 5,23           |  |  | PicFile=icon/base/Fax/AddRecipient.gif
    Recipient Name Label                     | Label                   | 65,25          | Name:
    Recipient Name Req Label                 | Label                   | 205,25         | (Required)
    RecipientName                            | TextEntry               | 65,45 200x20   |  |  | SetMaximum=31
    Recipient Number Label                   | Label                   | 65,75          | Fax Number:
    Recipient Number Req Label               | Label                   | 205,75         | (Required)
    RecipientNumber                          | TextEntry               | 65,95 200x20   |  |  | SetMaximum=46
    Recipient Organization Label             | Label                   | 65,125         | Organization:
    RecipientOrganization                    | TextEntry               | 65,145 200x20  |  |  | SetMaximum=59
    Recipient Tel Number Label               | Label                   | 65,175         | Phone Number:
    RecipientTelNumber                       | TextEntry               | 65,195 200x20  |  |  | SetMaximum=46
    Recipient Email Addr Label               | Label                   | 65,225         | Email Address:
    RecipientEmailAddr                       | TextEntry               | 65,245 200x20  |  |  | SetMaximum=59
    Recipient Mailbox Label                  | Label                   | 65,275         | Mailbox:
    RecipientMailbox                         | TextEntry               | 65,295 200x20  |  |  | SetMaximum=4
    AddtoPersonalPB                          | CheckBox                | 65,345         | Save to Personal Phonebook
    LanFaxAddRcpt OK Button                  | Button                  | 5,405 75x22    | _Ok | T40AddFaxRecipientTest
    LanFaxAddRcpt Cancel Button              | Button                  | 120,405 75x22  | _Cancel | T40CancelFaxRecipientDialog
    Help Button                              | Button                  | 235,405 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax

LanFax Recipient Properties Window           | DialogWindow            | 320x445        |  | T40RcptPropsClose | Title=Fax Recipient; Visibility=false
  Fax RcptProps Fixed                        | FixedContainer
    RcptProps Mimic                          | Picture                 | 5,23           |  |  | PicFile=icon/base/Fax/AddRecipient.gif
    RcptProps Name Label                     | Label                   | 65,25          | Name:
    RcptProps Name Req Label                 | Label                   | 205,25         | (Required)
    RcptPropsName                            | TextEntry               | 65,45 200x20   |  |  | SetMaximum=31
    RcptProps Number Label                   | Label                   | 65,75          | Fax Number:
    RcptProps Number Req Label               | Label                   | 205,75         | (Required)
    RcptPropsNumber                          | TextEntry               | 65,95 200x20   |  |  | SetMaximum=46
    RcptProps Organization Label             | Label                   | 65,125         | Organization:
    RcptPropsOrganization                    | TextEntry               | 65,145 200x20  |  |  | SetMaximum=59
    RcptProps Tel Number Label               | Label                   | 65,175         | Phone Number:
    RcptPropsTelNumber                       | TextEntry               | 65,195 200x20  |  |  | SetMaximum=46
    RcptProps Email Addr Label               | Label                   | 65,225         | Email Address:
    RcptPropsEmailAddr                       | TextEntry               | 65,245 200x20  |  |  | SetMaximum=59
    RcptProps Mailbox Label                  | Label                   | 65,275         | Mailbox:
    RcptPropsMailbox                         | TextEntry               | 65,295 200x20  |  |  | SetMaximum=4
    LanFaxRcptProps OK Button                | Button                  | 5,405 75x22    | _Ok | T40FaxRcptPropsOk
    LanFaxRcptProps Cancel Button            | Button                  | 120,405 75x22  | _Cancel | T40FaxRcptPropsCancel
    Help Button                              | Button                  | 235,405 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax

LanFax Add Recipient Error Window            | DialogWindow            | 250x100        |  | T40HideFaxRecipientErrorDialog | Title=Error!; Visibility=false
  LanFax Add Fax Rcpt Error Fixed            | FixedContainer
    LanFax Add Fax Rcpt Error Label          | Label                   | 5,10           | Missing required entries!  Please fill in&#10;missing information or Cancel.
    LanFax Add Fax Rcpt Error Close Button   | Button                  | 85,60 75x22    | _Close | T40HideFaxRecipientErrorDialog

Cover Sheet Setup Window                     | DialogWindow            | 320x395        |  | T40FaxCoverSheetSetupDialogCancel | Title=Cover Sheet Setup; Visibility=false
  Fax Cover Sheet Fixed                      | FixedContainer
    Add Rcpt Mimic                           | Picture                 | 5,23           |  |  | PicFile=icon/base/Advanced/Request-Banner-Sheet.gif
    Show Rcpt Info Checkbox                  | CheckBox                | 65,25          | Show Recipient Information
    Show Rcpt Info                           | RadioButton
      Show All Rcpt Info                     | RadioButtonItem         | 100,45         | Show All Recipients |  | Sensitivity=false
      Show Custom Text                       | RadioButtonItem         | 100,65         | Show Custom Text |  | Sensitivity=false
    Cover Sheet Custom Text                  | TextEntry               | 120,90 175x20  |  |  | SetMaximum=31; Sensitivity=false
    Show Sender Info Checkbox                | CheckBox                | 65,125         | Show Sender Information
    Sender Info Frame                        | FrameContainer          | 65,150 190x85
      Sender Info                            | Label                   | 175x75         |  |  | Sensitivity=false
    Sender Properties Button                 | Button                  | 105,240 100x22 | _Properties... | T40FaxSenderSetupInvoke | Sensitivity=false
    Cover Sheet Size Label                   | Label                   | 65,285         | Cover Sheet Paper Size:
    Cover Sheet Size                         | ComboBoxMain            | 65,305
      Letter                                 | ComboBoxItem            |                | Letter
      A4                                     | ComboBoxItem            |                | A4
    LanFaxCover OK Button                    | Button                  | 5,355 75x22    | _Ok | T40FaxCoverSheetSetupDialogOk
    LanFaxCover Cancel Button                | Button                  | 120,355 75x22  | _Cancel | T40FaxCoverSheetSetupDialogCancel
    Help Button                              | Button                  | 235,355 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax

Sender Information Window                    | DialogWindow            | 320x350        |  | T40FaxSenderSetupCancel | Title=Sender Information; Visibility=false
  Sender Information Fixed                   | FixedContainer
    Sender Info Mimic                        | Picture                 | 5,23           |  |  | PicFile=icon/base/Fax/AddRecipient.gif
    Sender Fax Number Label                  | Label                   | 65,25          | Fax Number:
    Sender Fax Number                        | TextEntry               | 65,45 200x20   |  |  | SetMaximum=46
    Sender Fax Name Label                    | Label                   | 65,75          | Name:
    Sender Fax Name                          | TextEntry               | 65,95 200x20   |  |  | SetMaximum=31
    Sender Fax Organization Label            | Label                   | 65,125         | Organization:
    Sender Fax Organization                  | TextEntry               | 65,145 200x20  |  |  | SetMaximum=59
    Sender Fax Tel Number Label              | Label                   | 65,175         | Phone Number:
    Sender Fax Tel Number                    | TextEntry               | 65,195 200x20  |  |  | SetMaximum=46
    Sender Fax Email Addr Label              | Label                   | 65,225         | Email Address:
    Sender Fax Email Addr                    | TextEntry               | 65,245 200x20  |  |  | SetMaximum=59
    LanFaxSender OK Button                   | Button                  | 5,305 75x22    | _Ok | T40FaxSenderSetupOk
    LanFaxSender Cancel Button               | Button                  | 120,305 75x22  | _Cancel | T40FaxSenderSetupCancel
    Help Button                              | Button                  | 235,305 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax

Add Rcpt From PB Window                      | DialogWindow            | 620x445        |  | T40AddRcptFromPBDialogCancel | Title=Add From Phonebook; Visibility=false
  Add Fax Rcpt From PB Fixed                 | FixedContainer
    Add Rcpt From PB Mimic                   | Picture                 | 5,23           |  |  | PicFile=icon/base/Fax/AddFromPhonebook.gif
    Fax Current PB Label                     | Label                   | 75,25          | Current Phonebook:
    Current PB Type                          | ComboBoxMain            | 75,45 250x25   |  | SetCurrentPBType
      Personal PB Type                       | ComboBoxItem            |                | Personal Phonebook
      Shared PB Type                         | ComboBoxItem            |                | Shared Phonebook
      LDAP PB Type                           | ComboBoxItem            |                | Shared LDAP Phonebook
    Fax PB List Scroll                       | ScrolledWindowContainer | 10,155 250x175
      Fax PB List                            | ListBox                 | 1500x2000      |  |  | AddListColumn1=Name; AddListColumn2=Fax Number; AddListColumn3=Organization; AddListColumn4=Phone Number; AddListColumn5=Email Address; AddListColumn6=Mailbox
    PB Prop Button                           | Button                  | 10,340 100x22  | Properties... |  | Visibility=false
    Search Label                             | Label                   | 10,95          | Search: |  | Visibility=false
    Search Status                            | Label                   | 75,95          |  |  | Visibility=false
    Search String                            | TextEntry               | 10,120 170x22  |  |  | Visibility=false
    Search Button                            | Button                  | 180,120 75x22  | _Search | PBSearch | Visibility=false
    Add Button                               | Button                  | 273,155 75x22  | _Add >> | T40AddFaxRecipientFromPBTest
    Add Button2                              | Button                  | 273,155 75x22  | _Add >> | T40AddFaxRecLDAP | Visibility=false
    Fax Current Recipeint List Label         | Label                   | 360,135        | Fax Recipients
    Fax Cur Recipient Scroll                 | ScrolledWindowContainer | 360,155 250x175
      Fax Cur Recipient List                 | ListBox                 | 1500x2000      |  | T40SelectTmpFaxRecipient | AddListColumn1=Name; AddListColumn2=Fax Number; AddListColumn3=Organization; AddListColumn4=Phone Number; AddListColumn5=Email Address; AddListColumn6=Mailbox
    Cur Rcpt Remove Button                   | Button                  | 360,340 100x22 | Remove... | T40RemoveTmpFaxRecipientTest
    Cur Rcpt Prop Button                     | Button                  | 480,340 100x22 | Properties... | T40ViewPBRcptProperties
    LanFaxRcptPB OK Button                   | Button                  | 350,405 75x22  | _Ok | T40AddRcptFromPBDialogOk
    LanFaxRcptPB Cancel Button               | Button                  | 445,405 75x22  | _Cancel | T40AddRcptFromPBDialogCancel
    LanFaxRcptPB Help Button                 | Button                  | 540,405 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax

LDAP Info Dialog                             | DialogWindow            | 540x505        |  | LDAPInfoClose | Title=LDAP Information; Visibility=false
  LDAP Info Fixed                            | FixedContainer
    LDAP Settings Label                      | Label                   | 160,5          | LDAP Settings
    LDAP HostPort Label                      | Label                   | 10,30          | Host Name and Port:
    LDAP HostPort                            | TextEntry               | 190,30 340x22  |  |  | Editable=false
    LDAP Secondary HostPort Label            | Label                   | 10,55          | Backup Host Name and Port:
    LDAP Secondary HostPort                  | TextEntry               | 190,55 340x22  |  |  | Editable=false
    LDAP Search Directory Root Label         | Label                   | 10,80          | Search Directory Root:
    LDAP Search Directory Root               | TextEntry               | 190,80 340x22  |  |  | Editable=false
    LDAP Settings Label                      | Label                   | 160,130        | LDAP Mappings
    LDAP Server Type Label                   | Label                   | 10,155         | LDAP Server Type:
    LDAP Server Type                         | TextEntry               | 190,155 340x22 |  |  | Editable=false
    Login Name Label                         | Label                   | 10,180         | Login Name:
    Login Name                               | TextEntry               | 190,180 340x22 |  |  | Editable=false
    Name Label                               | Label                   | 10,205         | Name:
    Name                                     | TextEntry               | 190,205 340x22 |  |  | Editable=false
    Email Label                              | Label                   | 10,230         | Email Address:
    Email                                    | TextEntry               | 190,230 340x22 |  |  | Editable=false
    Bus Phone Label                          | Label                   | 10,255         | Business Phone:
    Bus Phone                                | TextEntry               | 190,255 340x22 |  |  | Editable=false
    Bus Addr Label                           | Label                   | 10,280         | Business Address:
    Bus Addr                                 | TextEntry               | 190,280 340x22 |  |  | Editable=false
    Office Label                             | Label                   | 10,305         | Office:
    Office                                   | TextEntry               | 190,305 340x22 |  |  | Editable=false
    LDAP City Label                          | Label                   | 10,330         | City:
    LDAP City                                | TextEntry               | 190,330 340x22 |  |  | Editable=false
    LDAP State Label                         | Label                   | 10,355         | State:
    LDAP State                               | TextEntry               | 190,355 340x22 |  |  | Editable=false
    LDAP ZipCode Label                       | Label                   | 10,380         | Zip Code:
    LDAP ZipCode                             | TextEntry               | 190,380 340x22 |  |  | Editable=false
    LDAP Country Label                       | Label                   | 10,405         | Country:
    LDAP Country                             | TextEntry               | 190,405 340x22 |  |  | Editable=false
    LDAP Fax Label                           | Label                   | 10,430         | Internet Fax:
    LDAP Fax                                 | TextEntry               | 190,430 340x22 |  |  | Editable=false
    LDAP Info Close                          | Button                  | 170,465 75x22  | _Close | LDAPInfoClose

LanFax Add Group Window                      | DialogWindow            | 600x330        |  | T40SaveGroupCancel | Title=Save to Personal Phonebook; Visibility=false
  LanFax Add Group Fixed                     | FixedContainer
    LanFaxAddGroup Mimic                     | Picture                 | 5,10           |  |  | PicFile=icon/base/Fax/AddFromPhonebook.gif
    LanFaxAddGroup Group Name Label          | Label                   | 75,10          | Group Name:
    LanFaxAddGroup Req Label                 | Label                   | 195,10         | (Required)
    LanFaxAddGroup Group Name                | TextEntry               | 75,35 178x22   |  |  | SetMaximum=31
    LanFaxAddGroup List Label                | Label                   | 75,75          | Members:
    LanFaxAddGroup Group Scroll              | ScrolledWindowContainer | 75,97 504x175
      LanFaxAddGroup Group List              | ListBox                 | 1500x1500      |  |  | AddListColumn1=Name; AddListColumn2=Fax Number; AddListColumn3=Organization; AddListColumn4=Phone Number; AddListColumn5=Email Address; AddListColumn6=Mailbox
    LanFaxAddGroup Ok Button                 | Button                  | 75,292 75x22   | _Ok | T40SaveGroupOk
    LanFaxAddGroup Cancel Button             | Button                  | 290,292 75x22  | _Cancel | T40SaveGroupCancel
    LanFaxAddGroup Help Button               | Button                  | 505,292 75x22  | _Help | ProcessPushButtonHelpInvocation | HelpTopic=LanFax
)table";

#endif
