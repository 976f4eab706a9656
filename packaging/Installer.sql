UPDATE `Property` SET `Value` = 'Backups as plain files, in English and in Arabic - نسخ احتياطي إلى ملفات عادية، بالعربية والإنجليزية' WHERE `Property` = 'ARPCOMMENTS'
UPDATE `LaunchCondition` SET `Description` = 'A newer version of Vaultwright is installed already - هناك إصدار أحدث من البرنامج مثبّت بالفعل' WHERE `Condition` = 'NOT WIX_DOWNGRADE_DETECTED'
UPDATE `Shortcut` SET `Description` = 'Back up and restore files - نسخ الملفات احتياطياً واستعادتها' WHERE `Shortcut` = 'StartMenuShortcut'
CREATE TABLE `Environment` (`Environment` CHAR(72) NOT NULL, `Name` CHAR(255) NOT NULL LOCALIZABLE, `Value` CHAR(255) LOCALIZABLE, `Component_` CHAR(72) NOT NULL PRIMARY KEY `Environment`)
INSERT INTO `Environment` (`Environment`, `Name`, `Value`, `Component_`) VALUES ('CommandPath', '=-PATH', '[~];[INSTALLDIR]', 'CommandPath')
INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('WriteEnvironmentStrings', 5200)
INSERT INTO `InstallExecuteSequence` (`Action`, `Sequence`) VALUES ('RemoveEnvironmentStrings', 3300)
