<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="en">
<context>
    <name>veslora::ClaudeRequestPresenter</name>
    <message numerus="yes">
        <source>+%Ln waiting</source>
        <translation>
            <numerusform>+%Ln waiting</numerusform>
            <numerusform>+%Ln waiting</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%n seconds to answer.</source>
        <translation>
            <numerusform>%n second to answer.</numerusform>
            <numerusform>%n seconds to answer.</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veslora::ClaudeWidgetPresenter</name>
    <message numerus="yes">
        <source>%Ln working</source>
        <translation>
            <numerusform>%Ln working</numerusform>
            <numerusform>%Ln working</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veslora::EditableModulePresenter</name>
    <message numerus="yes">
        <source>%1 size %Ln unit(s)</source>
        <translation>
            <numerusform>%1 size %Ln unit</numerusform>
            <numerusform>%1 size %Ln units</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>Switch to %Ln unit(s)</source>
        <translation>
            <numerusform>Switch to %Ln unit</numerusform>
            <numerusform>Switch to %Ln units</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veslora::TimerPickerPresenter</name>
    <message numerus="yes">
        <source>%Ln minute(s)</source>
        <translation>
            <numerusform>%Ln minute</numerusform>
            <numerusform>%Ln minutes</numerusform>
        </translation>
    </message>
</context>
<context>
    <name>veslora::WidgetLibraryPresenter</name>
    <message numerus="yes">
        <source>%Ln unit(s)</source>
        <translation>
            <numerusform>%Ln unit</numerusform>
            <numerusform>%Ln units</numerusform>
        </translation>
    </message>
    <message numerus="yes">
        <source>%Ln unit(s) wide</source>
        <translation>
            <numerusform>%Ln unit wide</numerusform>
            <numerusform>%Ln units wide</numerusform>
        </translation>
    </message>
</context>
</TS>
