UPDATE `Property` SET `Value` = 'Backups as plain files, in English and in Arabic - نسخ احتياطي إلى ملفات عادية، بالعربية والإنجليزية' WHERE `Property` = 'ARPCOMMENTS'
UPDATE `LaunchCondition` SET `Description` = 'A newer version of Vaultwright is installed already - هناك إصدار أحدث من البرنامج مثبّت بالفعل' WHERE `Condition` = 'NOT WIX_DOWNGRADE_DETECTED'
UPDATE `Shortcut` SET `Description` = 'Back up and restore files - نسخ الملفات احتياطياً واستعادتها' WHERE `Shortcut` = 'StartMenuShortcut'
