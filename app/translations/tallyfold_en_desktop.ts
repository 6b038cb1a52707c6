<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en_US" sourcelanguage="en_US">
<context>
    <name>Words</name>
    <message>
        <source>Numbers reach %1, longer than %2 digits, so copies named by Bates number won’t sort in order in Finder.</source>
        <translation>Numbers reach %1, longer than %2 digits, so copies named by Bates number won’t sort in order in the file manager.</translation>
    </message>
    <message>
        <source>Drop a folder of PDFs (or the PDFs themselves) on the list, or choose File › Add PDFs (⌘O). PDFs in subfolders are added too.</source>
        <translation>Drop a folder of PDFs (or the PDFs themselves) on the list, or choose File › Add PDFs (Ctrl+O). PDFs in subfolders are added too.</translation>
    </message>
    <message>
        <source>Choose an empty output folder and click Stamp (⌘Return). The stamped copies and a production index are written there; the originals are only read.</source>
        <translation>Choose an empty output folder and click Stamp (Ctrl+Return). The stamped copies and a production index are written there; the originals are only read.</translation>
    </message>
    <message>
        <source>Numbers continue from file to file. File order can be by name (the way Finder sorts, so 2 comes before 10), oldest first, or as listed: drag files in the list to set it.</source>
        <translation>Numbers continue from file to file. File order can be by name (the way the file manager sorts, so 2 comes before 10), oldest first, or as listed: drag files in the list to set it.</translation>
    </message>
    <message>
        <source>To remove the password in Preview: open the PDF and type the password if asked. Choose File › Export, leave Encrypt off (on newer macOS, click Permissions and turn off the password and every restriction; Preview asks for the owner password), and save the copy under a new name.</source>
        <translation>To remove the password in a PDF viewer: open the PDF and type the password if asked. Choose File › Print, print to a PDF file (if printing is restricted, the viewer asks for the owner password or the sender has to lift it), and save the copy under a new name.</translation>
    </message>
    <message>
        <source>Your PDFs are read and stamped on this Mac and never uploaded. Your settings and presets are kept in the app’s preferences. There’s no account and no tracking.</source>
        <translation>Your PDFs are read and stamped on this computer and never uploaded. Your settings and presets are kept in the app’s preferences. There’s no account and no tracking.</translation>
    </message>
    <message>
        <source>This PDF is password-protected and won’t be stamped: %1. Remove the password (open it in Preview › File › Export without the Encrypt option, or in Acrobat) and add it again.</source>
        <translation>This PDF is password-protected and won’t be stamped: %1. Remove the password (open it in a PDF viewer and print it to a new PDF file, or in Acrobat) and add it again.</translation>
    </message>
    <message>
        <source>This PDF is password-protected: it needs a password to open. Remove the password (open it in Preview › File › Export without the Encrypt option, or in Acrobat) and add it again; %1 won’t stamp protected files.</source>
        <translation>This PDF is password-protected: it needs a password to open. Remove the password (open it in a PDF viewer and print it to a new PDF file, or in Acrobat) and add it again; %1 won’t stamp protected files.</translation>
    </message>
    <message>
        <source>This PDF is password-protected: its owner password restricts printing, editing or copying. Remove the password (open it in Preview › File › Export without the Encrypt option, or in Acrobat) and add it again; %1 won’t stamp protected files.</source>
        <translation>This PDF is password-protected: its owner password restricts printing, editing or copying. Remove the password (open it in a PDF viewer and print it to a new PDF file, or in Acrobat) and add it again; %1 won’t stamp protected files.</translation>
    </message>
    <message>
        <source>%1 PDFs are password-protected and won’t be stamped: %2. Remove the passwords (open each in Preview › File › Export without the Encrypt option, or in Acrobat) and add them again.</source>
        <translation>%1 PDFs are password-protected and won’t be stamped: %2. Remove the passwords (open each in a PDF viewer and print it to a new PDF file, or in Acrobat) and add them again.</translation>
    </message>
    <message>
        <source>This file isn’t a PDF that macOS can open. It will be skipped and listed in the index.</source>
        <translation>This file isn’t a PDF that this computer can open. It will be skipped and listed in the index.</translation>
    </message>
    <message>
        <source>Stamped copies and a production index go to a folder you choose; nothing is replaced, and nothing leaves this Mac.</source>
        <translation>Stamped copies and a production index go to a folder you choose; nothing is replaced, and nothing leaves this computer.</translation>
    </message>
    <message>
        <source>%1 keeps only your settings and presets, in its preferences on this Mac. Your PDFs are read where they are and nothing is uploaded.</source>
        <translation>%1 keeps only your settings and presets, in its preferences on this computer. Your PDFs are read where they are and nothing is uploaded.</translation>
    </message>
    <message>
        <source>Show Original in Finder</source>
        <translation>Show Original in File Manager</translation>
    </message>
    <message>
        <source>Show in Finder</source>
        <translation>Show in File Manager</translation>
    </message>
    <message>
        <source>Write the stamped copies (⌘Return)</source>
        <translation>Write the stamped copies (Ctrl+Return)</translation>
    </message>
    <message>
        <source>Add PDFs or folders (⌘O)</source>
        <translation>Add PDFs or folders (Ctrl+O)</translation>
    </message>
</context>
</TS>
